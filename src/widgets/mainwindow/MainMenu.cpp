#include "widgets/mainwindow/MainMenu.h"

#include "groups/GroupNames.h"
#include "widgets/controls/FocusAfterMenu.h"
#include "widgets/controls/Mnemonics.h"
#include "widgets/filetable/OpenWithItems.h"

#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

namespace veilkeep {

MainMenu::MainMenu(QMenuBar& bar, CommandActions& actions, FilesViewController& files,
                   GroupViewController& groups, FileListActions& fileActions)
    : m_bar(bar), m_actions(actions), m_files(files), m_groups(groups), m_fileActions(fileActions) {
    using enum Command;
    QMenu* const file = addMenu(tr("File"));
    fill(*file, {AddFiles, RestoreFiles, PerformSanityCheck, {}, OpenFile});
    addOpenWith(*file);
    fill(*file, {RevealFile, QuickLook, {}, CloseWindow, Quit});

    QMenu* const edit = addMenu(tr("Edit"));
    fill(*edit, {HideFiles, UnhideFiles, {}, SelectAll});
    addMoveToGroup(*edit);
    fill(*edit, {RemoveItem, {}, Search, {}, Password, Preferences});

    QMenu* const view = addMenu(tr("View"));
    addSubmenu(*view, tr("Items to Show"), {ShowAll, ShowHidden, ShowVisible, ShowBroken});
    addSubmenu(*view, tr("Sort By"), {SortByName, SortByPlace, SortBySize, SortByState});
    fill(*view, {{}, ToggleInfo});

    fill(*addMenu(tr("Groups")), {AddGroup,
                                  EditGroup,
                                  DeleteGroup,
                                  {},
                                  HideCurrentGroup,
                                  UnhideCurrentGroup,
                                  {},
                                  ManualAutoHide,
                                  ManualAutoUnhide});
    fill(*addMenu(tr("Help")), {Help, Forum, SupportCenter, Feedback, {}, CheckForUpdates, {}, About});

    connect(&m_actions, &CommandActions::validated, this, &MainMenu::assignAllMnemonics);
    assignAllMnemonics();
    connect(new QShortcut(QKeySequence(Qt::Key_F10), &bar), &QShortcut::activated, this, &MainMenu::open);
}

// Not where the desktop shows the menus elsewhere.
void MainMenu::open() {
    if (!m_bar.isVisible())
        return;
    QAction* const first = m_bar.actions().constFirst();
    m_bar.setActiveAction(first);
    for (QAction* const action : first->menu()->actions())
        if (action->isVisible() && action->isEnabled() && !action->isSeparator())
            return first->menu()->setActiveAction(action);
}

// Without a step to the bar, which has the focus where a letter has opened the menu.
bool MainMenu::eventFilter(QObject* watched, QEvent* event) {
    const auto* const pressed = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    if (!pressed || (pressed->key() != Qt::Key_Escape && pressed->key() != Qt::Key_F10))
        return QObject::eventFilter(watched, event);
    static_cast<QMenu*>(watched)->close();
    QKeyEvent leave(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    if (m_bar.hasFocus())
        QApplication::sendEvent(&m_bar, &leave);
    return true;
}

QMenu* MainMenu::addMenu(const QString& title) {
    QMenu* const menu = m_bar.addMenu(title);
    setTitle(*menu->menuAction(), title);
    menu->installEventFilter(this);
    tellFocusAfter(*menu);
    connect(menu, &QMenu::aboutToShow, &m_actions, qOverload<>(&CommandActions::validate));
    return menu;
}

void MainMenu::fill(QMenu& menu, std::initializer_list<std::optional<Command>> commands) {
    for (const std::optional<Command>& command : commands) {
        if (!command)
            menu.addSeparator();
        else if (QAction* const action = m_actions.action(*command))
            menu.addAction(action);
    }
}

void MainMenu::addSubmenu(QMenu& menu, const QString& title, std::initializer_list<Command> commands) {
    QMenu* const submenu = menu.addMenu(title);
    setTitle(*submenu->menuAction(), title);
    auto* const group = new QActionGroup(submenu);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const Command command : commands) {
        if (QAction* const action = m_actions.action(command)) {
            submenu->addAction(action);
            group->addAction(action);
        }
    }
    submenu->menuAction()->setVisible(!submenu->isEmpty());
}

void MainMenu::addOpenWith(QMenu& menu) {
    QAction* const action = m_actions.action(Command::OpenWith);
    if (!action)
        return;
    auto* const submenu = new QMenu(&menu);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu] {
        fillOpenWithMenu(*submenu, m_files, m_fileActions, [this] { emit chooseApplicationRequested(); });
    });
    action->setMenu(submenu);
    menu.addAction(action);
}

// What dragging does with the mouse.
void MainMenu::addMoveToGroup(QMenu& menu) {
    const QString title = tr("Move to Group");
    QMenu* const submenu = menu.addMenu(title);
    setTitle(*submenu->menuAction(), title);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu] { fillMoveToGroup(*submenu); });
    connect(&m_actions, &CommandActions::validated, submenu,
            [this, submenu] { submenu->menuAction()->setEnabled(m_files.firstSelectedFile() != nullptr); });
}

void MainMenu::fillMoveToGroup(QMenu& menu) {
    menu.clear();
    for (const ListedGroup& group : m_groups.groups()) {
        if (group->isHeaderRow())
            continue;
        QAction* const action = menu.addAction(QString());
        setTitle(*action, shownGroupName(*group));
        connect(action, &QAction::triggered, &m_groups, [this, group] { m_groups.moveSelectedFiles(group); });
    }
    assignMnemonics(menu);
}

void MainMenu::assignAllMnemonics() {
    assignMnemonics(m_bar);
    for (const QMenu* const menu : m_bar.findChildren<QMenu*>())
        assignMnemonics(*menu);
}

} // namespace veilkeep
