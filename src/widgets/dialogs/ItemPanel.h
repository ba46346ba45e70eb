#pragma once

#include "widgets/dialogs/FolderContents.h"

#include <QDialog>

#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QToolButton;
class QVBoxLayout;

namespace veilkeep {

class FolderModel;
class PlaceList;

// Has the user choose files and folders, both in one list, by their names as bytes. Return enters the folder
// that the keyboard is on, the button chooses it. Made by OpenPanels; main thread.
class ItemPanel : public QDialog {
    Q_OBJECT

public:
    struct Wishes {
        QString title;
        QString button;
        bool foldersOnly = false; // nothing selected means the folder that is shown
        bool several = false;
        std::function<bool(const std::string& name)> onlyFiles = {}; // set: these, and no folders
    };

    ItemPanel(const Wishes& wishes, QWidget* parent);

    void startAt(const std::string& path); // an item to be selected, a folder to be shown, or gone
    void showFolder(const std::string& path, const std::string& selected = {});

    std::vector<std::string> chosen() const; // absolute; of an accepted panel

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    QWidget* makePathRow();
    QWidget* makeList();
    QWidget* makeButtons();
    void addKeys();
    void showContents(const std::string& path, const FolderReader::Contents& contents);
    bool isWanted(const FolderEntry& entry) const;
    void selectName(const std::string& name);
    void goToTyped();
    void goUp();
    void openCurrent();
    void validate();

    Wishes m_wishes;
    FolderReader m_reader;
    FolderModel* m_model;
    std::string m_folder;
    std::string m_toSelect;
    QLineEdit* m_path = nullptr;
    QToolButton* m_up = nullptr;
    PlaceList* m_places = nullptr;
    QListView* m_list = nullptr;
    QLabel* m_status = nullptr;
    QCheckBox* m_hidden = nullptr;
    QPushButton* m_choose = nullptr;
};

} // namespace veilkeep
