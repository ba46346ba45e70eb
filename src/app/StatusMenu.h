#pragma once

#include "groups/GroupViewController.h"
#include "widgets/mainwindow/Commands.h"

#include <QMenu>
#include <QObject>
#include <QStringList>

#include <vector>

namespace veilkeep {

// The menu of the icon in the desktop's panel: a submenu for each group, and the application's own commands.
// Owned by the application; main thread.
class StatusMenu : public QObject {
    Q_OBJECT

public:
    StatusMenu(GroupViewController& groups, CommandTarget& commands); // neither is owned

    QMenu& statusMenu() { return m_statusMenu; }

    void updateGroupsMenu();

signals:
    void hideMenuClicked(const veilkeep::ListedGroup& group);
    void unhideMenuClicked(const veilkeep::ListedGroup& group);

private:
    void addCommand(Command command);
    void groupMenuItemWithName(const QString& name, const ListedGroup& group);

    GroupViewController& m_groups;
    CommandTarget& m_commands;
    QMenu m_statusMenu;
    QMenu* m_dynamicMenu;
    std::vector<ListedGroup> m_shownGroups;
    QStringList m_shownNames;
};

} // namespace veilkeep
