#include "widgets/filetable/FilesContextMenu.h"

#include "widgets/filetable/OpenWithItems.h"

#include <string>
#include <utility>

namespace veilkeep {
namespace {

QString withoutMnemonic(QString title) {
    return title.replace('&', QStringLiteral("&&"));
}

} // namespace

FilesContextMenu::FilesContextMenu(FilesViewController& files, FileListActions& actions, std::ptrdiff_t row,
                                   const QString& currentGroupName, QWidget* parent)
    : QMenu(parent), m_files(files), m_actions(actions), m_currentGroupName(currentGroupName) {
    const int switchValue = m_actions.menuState(row);
    const auto isEnabled = [this](int tag) {
        return m_actions.validateMenuItem(tag, m_currentGroupName).isEnabled;
    };
    add(tr("Open"), [this] { m_actions.openFileAction(); })->setEnabled(isEnabled(FileListActions::Open));
    addOpenWith();
    add(tr("Show in File Manager"), [this] {
        m_actions.menuRevealFileInFinder();
    })->setEnabled(isEnabled(FileListActions::Reveal));
    add(tr("Quick Preview"), [this] { emit quickLookRequested(); });
    addSwitch(switchValue);
    addSeparator();
    add(m_actions.validateMenuItem(FileListActions::Remove, m_currentGroupName).title,
        [this] { m_files.removeFromListAction(); });
}

QAction* FilesContextMenu::add(const QString& title, std::function<void()> act) {
    QAction* const action = addAction(withoutMnemonic(title));
    connect(action, &QAction::triggered, this, std::move(act));
    return action;
}

// An item that is not where it should be alone can be asked about.
void FilesContextMenu::addSwitch(int value) {
    const ListedFile first = m_files.firstSelectedFile();
    if (first && first->state() == File::Broken && m_files.filesController().selectedCount() == 1) {
        add(tr("Fix…"), [this, path = std::string(first->path())] { m_files.hideOrUnhideFileInTable(path); });
        return;
    }
    add(value == 1 ? tr("Unhide") : tr("Hide"), [this] { m_actions.menuSwitchOnOff(); });
}

void FilesContextMenu::addOpenWith() {
    QMenu* const menu = addMenu(tr("Open With"));
    menu->setEnabled(m_actions.validateMenuItem(FileListActions::OpenWith, m_currentGroupName).isEnabled);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        fillOpenWithMenu(*menu, m_files, m_actions, [this] { emit chooseApplicationRequested(); });
    });
}

} // namespace veilkeep
