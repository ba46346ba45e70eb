#pragma once

#include "filelist/FilesViewController.h"
#include "groups/AutoHideMark.h"
#include "groups/GroupImages.h"
#include "groups/GroupSelection.h"
#include "groups/GroupsInfoFile.h"
#include "platform/Sounds.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// What the group list works with. Nothing of it is owned; all of it outlives the controller.
struct GroupViewControllerParts {
    GroupsInfoFile& dataFile;
    FilesViewController& files;
    GroupSelection& selection;
    AutoHideMark& mark;
    Alerts& alerts;
    Turns& turns;
    GroupImages* images = nullptr; // none: icons stay empty
    Sounds* sounds = nullptr;
};

// Owns the groups and does everything to them: keeps them on the disk, adds, removes, renames and orders
// them, hides and shows their items, and runs the passes of the AutoHide groups. Main thread; what users
// start goes through Turns (the slots do), the rest belongs to whoever runs at that moment.
class GroupViewController : public QObject {
    Q_OBJECT
public:
    explicit GroupViewController(const GroupViewControllerParts& parts);

    void start(); // loads the groups, or makes the default ones

    // --- The rows ---
    const std::vector<ListedGroup>& groups() const { return m_groups; }
    ListedGroup groupForName(std::string_view name) const; // the first; null where there is none
    bool ifExistsGroupWithName(std::string_view name) const { return groupForName(name) != nullptr; }
    std::vector<std::string> groupsNames() const; // without header rows
    static std::int64_t allFilesGroup() { return CurrentGroup::allFiles; }
    std::string uniqueGroupName() const;
    std::int64_t uniqueGroupID() const;

    // --- Hiding and showing (GroupHiding.cpp) ---
    bool hideGroup(const ListedGroup& group, bool collectErrors);
    bool unhideGroup(const ListedGroup& group, bool collectErrors);
    bool hideGroupWithName(std::string_view name, bool collectErrors);
    bool unhideGroupWithName(std::string_view name, bool collectErrors);
    void setAutoHide(bool autoHide, std::string_view forGroup);

    // The reason goes to the log, as do the items that stayed visible.
    bool makeAutoHide(const QString& reason);
    void autoUnhideThread();
    bool autoUnhideHappened() const { return m_autoUnhideHappened; }
    void setAutoUnhideHappened(bool happened) { m_autoUnhideHappened = happened; }

    // Paths of the items that the last passes left visible, until somebody has seen them.
    const std::vector<std::string>& leftVisible() const { return m_leftVisible; }
    void leftVisibleWasSeen();

signals:
    void groupsChanged(); // rows, or what is in one
    void GroupsUpdated(); // after adding, removing, editing
    void leftVisibleChanged();

private:
    const GroupViewControllerParts m_parts;
    std::vector<ListedGroup> m_groups;
    bool m_autoUnhideHappened = false;
    std::vector<std::string> m_leftVisible;
};

} // namespace veilkeep
