#include "widgets/dialogs/OpenPanels.h"

#include "core/base/PathText.h"
#include "widgets/dialogs/ApplicationPanel.h"
#include "widgets/dialogs/ModalRun.h"
#include "widgets/dialogs/windowPlacement.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(OpenPanels)
};

} // namespace

OpenPanels::OpenPanels(MainWindowAnswer mainWindow) : m_mainWindow(std::move(mainWindow)) {}

OpenPanels::~OpenPanels() = default;

std::optional<std::string> OpenPanels::chooseItem(const std::string& startingAt) {
    const auto items = chooseItems({Texts::tr("Locate Item"), Texts::tr("Choose")}, startingAt);
    return items.empty() ? std::nullopt : std::optional(items.front());
}

std::vector<std::string> OpenPanels::chooseDirectoriesToRestore(const std::string& startingAt) {
    return chooseItems({Texts::tr("Restore Folders"), Texts::tr("Restore"), true, true}, startingAt);
}

std::vector<std::string> OpenPanels::chooseItemsToAdd() {
    auto items = chooseItems({Texts::tr("Add Items"), Texts::tr("Add"), false, true}, m_lastFolder);
    if (!items.empty())
        m_lastFolder = std::string(parentPath(items.front()));
    return items;
}

std::optional<std::string>
OpenPanels::chooseImage(const std::function<bool(const std::string& name)>& isImage) {
    QWidget* const sheet = QApplication::activeModalWidget();
    const auto items =
        chooseItems({.title = Texts::tr("Choose Image"), .button = Texts::tr("Choose"), .onlyFiles = isImage},
                    m_lastImageFolder, sheet ? sheet : visibleWindow(m_mainWindow));
    if (items.empty())
        return std::nullopt;
    m_lastImageFolder = std::string(parentPath(items.front()));
    return items.front();
}

std::vector<std::string> OpenPanels::chooseItems(const ItemPanel::Wishes& wishes,
                                                 const std::string& startingAt, QWidget* parent) {
    const QPointer<ItemPanel> panel(new ItemPanel(wishes, parent));
    panel->startAt(startingAt);
    std::vector<std::string> items;
    if (isAccepted(*panel))
        items = panel->chosen();
    delete panel;
    return items;
}

std::optional<QString> OpenPanels::chooseApplication(const std::vector<InstalledApplication>& applications) {
    const QPointer<ApplicationPanel> panel(new ApplicationPanel(applications, visibleWindow(m_mainWindow)));
    std::optional<QString> identifier;
    if (isAccepted(*panel))
        identifier = panel->chosen();
    delete panel;
    return identifier;
}

// False as well where the panel is gone, with the main window for example.
bool OpenPanels::isAccepted(QDialog& panel) {
    panel.setWindowModality(panel.parentWidget() ? Qt::WindowModal : Qt::ApplicationModal);
    std::erase_if(m_open, [](const auto& each) { return each.isNull(); });
    m_open.emplace_back(&panel);
    return runModal(panel) && panel.result() == QDialog::Accepted;
}

bool OpenPanels::raiseOpen() {
    const auto open =
        std::ranges::find_if(m_open, [](const auto& each) { return each && each->isVisible(); });
    if (open == m_open.end())
        return false;
    (*open)->raise();
    (*open)->activateWindow();
    return true;
}

void OpenPanels::cancelOpen() {
    closePopups();
    const auto open = m_open;
    for (const auto& panel : open)
        if (panel)
            panel->reject();
}

} // namespace veilkeep
