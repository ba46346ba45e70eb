#include "app/StatusMenu.h"

#include "groups/GroupNames.h"
#include "widgets/mainwindow/CommandTexts.h"

namespace veilkeep {
namespace {

// Names may hold what menus take for a mnemonic.
QString menuTitle(const QString& name) {
    return QString(name).replace(u'&', QLatin1String("&&"));
}

} // namespace

StatusMenu::StatusMenu(GroupViewController& groups, CommandTarget& commands)
    : m_groups(groups), m_commands(commands) {
    addCommand(Command::ShowVeilkeep);
    m_statusMenu.addSeparator();
    m_dynamicMenu = m_statusMenu.addMenu(tr("Groups"));
    addCommand(Command::ManualAutoHide);
    addCommand(Command::ManualAutoUnhide);
    m_statusMenu.addSeparator();
    addCommand(Command::AddFiles);
    addCommand(Command::Preferences);
    m_statusMenu.addSeparator();
    addCommand(Command::About);
    addCommand(Command::Quit);
    connect(&m_groups, &GroupViewController::GroupsUpdated, this, &StatusMenu::updateGroupsMenu);
    connect(&m_groups, &GroupViewController::groupsChanged, this, &StatusMenu::updateGroupsMenu);
    updateGroupsMenu();
}

void StatusMenu::addCommand(Command command) {
    if (!m_commands.exists(command))
        return;
    QAction* const action = m_statusMenu.addAction(commandTitle(command));
    connect(action, &QAction::triggered, this, [this, command] { m_commands.perform(command); });
}

// Whoever shows the menu may be another program: it is told of a change only where there is one.
void StatusMenu::updateGroupsMenu() {
    QStringList names;
    std::vector<ListedGroup> groups;
    for (const ListedGroup& group : m_groups.groups()) {
        if (group->isHeaderRow())
            continue;
        groups.push_back(group);
        names.push_back(shownGroupName(*group));
    }
    if (groups == m_shownGroups && names == m_shownNames)
        return;
    m_dynamicMenu->clear();
    for (QMenu* const menu : m_dynamicMenu->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
        menu->deleteLater(); // it may be what was just chosen from
    for (std::size_t number = 0; number < groups.size(); ++number)
        groupMenuItemWithName(names[static_cast<qsizetype>(number)], groups[number]);
    m_shownGroups = std::move(groups);
    m_shownNames = names;
}

void StatusMenu::groupMenuItemWithName(const QString& name, const ListedGroup& group) {
    QMenu* const menu = m_dynamicMenu->addMenu(menuTitle(name));
    connect(menu->addAction(tr("Show")), &QAction::triggered, this,
            [this, group] { emit unhideMenuClicked(group); });
    menu->addSeparator();
    connect(menu->addAction(tr("Hide")), &QAction::triggered, this,
            [this, group] { emit hideMenuClicked(group); });
}

} // namespace veilkeep
