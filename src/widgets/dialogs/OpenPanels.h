#pragma once

#include "alerts/PathChooser.h"
#include "platform/Applications.h"
#include "widgets/dialogs/ItemPanel.h"
#include "widgets/dialogs/MainWindowAnswer.h"

#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace veilkeep {

// The panels in which the user chooses items or an application: on the main window where it can be seen. Each
// call returns when its panel has closed; the event loop turns meanwhile. Main thread.
class OpenPanels : public PathChooser {
public:
    explicit OpenPanels(MainWindowAnswer mainWindow);
    ~OpenPanels() override;
    OpenPanels(const OpenPanels&) = delete;
    OpenPanels& operator=(const OpenPanels&) = delete;

    std::optional<std::string> chooseItem(const std::string& startingAt) override;
    std::vector<std::string> chooseDirectoriesToRestore(const std::string& startingAt) override;
    std::vector<std::string>
    chooseItemsToAdd(); // files and folders, where the last one of this kind was left

    // One file, in front of whatever sheet is open.
    std::optional<std::string> chooseImage(const std::function<bool(const std::string& name)>& isImage);

    // The identifier; nothing when the user cancels.
    std::optional<QString> chooseApplication(const std::vector<InstalledApplication>& applications);

    bool raiseOpen();  // to the front; false where none is
    void cancelOpen(); // at any time: nothing is chosen

private:
    std::vector<std::string> chooseItems(const ItemPanel::Wishes& wishes, const std::string& startingAt) {
        return chooseItems(wishes, startingAt, visibleWindow(m_mainWindow));
    }
    std::vector<std::string> chooseItems(const ItemPanel::Wishes& wishes, const std::string& startingAt,
                                         QWidget* parent);
    bool isAccepted(QDialog& panel);

    MainWindowAnswer m_mainWindow;
    std::vector<QPointer<QDialog>> m_open;
    std::string m_lastFolder;      // of items to add
    std::string m_lastImageFolder; // of images
};

} // namespace veilkeep
