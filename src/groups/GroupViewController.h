#pragma once

#include "filelist/FilesViewController.h"
#include "groups/AutoHideMark.h"
#include "groups/GroupDrag.h"
#include "groups/GroupImages.h"
#include "groups/GroupSelection.h"
#include "groups/GroupsInfoFile.h"
#include "platform/Sounds.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
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

    // Loads the groups, or makes the default ones, and selects the first. Without the right to change the
    // lists nothing is ever saved.
    void start(bool mayChange = true);

    // --- The rows ---
    static constexpr std::size_t firstMovableRow = 2; // below the group of all files and the header row
    const std::vector<ListedGroup>& groups() const { return m_groups; }
    void initMainGroupRows();
    void makeAutoHideExampleGroup();
    ListedGroup groupForName(std::string_view name) const; // the first; null where there is none
    bool ifExistsGroupWithName(std::string_view name) const { return groupForName(name) != nullptr; }
    std::vector<std::string> groupsNames() const; // without header rows
    static std::int64_t allFilesGroup() { return CurrentGroup::allFiles; }
    std::string uniqueGroupName() const;
    std::int64_t uniqueGroupID() const; // in one pass over the rows: taken perhaps, where they were reordered

    // Each is saved at once.
    ListedGroup addGroup();
    bool removeGroup(const ListedGroup& group); // asks; what is shown goes to the group of all files
    void setNewName(std::string_view newName, const std::string& andIconPath, std::string_view forGroup);
    void setNewName(std::string_view newName, const std::string& andIconPath, const ListedGroup& forGroup);
    bool renameInPlace(const ListedGroup& group, const QString& typed); // false: the user was told why not
    void setAutoHide(bool autoHide, std::string_view forGroup);
    void setAutoHide(bool autoHide, const ListedGroup& forGroup);
    void moveGroup(const ListedGroup& group, std::size_t toRow); // where it lies in the end
    void incFilesOfGroup(std::string_view name);
    void decFilesOfGroup(std::string_view name);
    void fillIcon(const ListedGroup& group); // for who draws it: an empty icon from its path

    // --- The table ---
    ListedGroup currentGroup() const { return m_current; }
    std::string currentGroupName() const;
    std::optional<std::int64_t> currentGroupID() const; // nothing as long as there are no groups
    std::optional<std::size_t> rowOf(const ListedGroup& group) const;
    void selectRow(std::ptrdiff_t row); // nothing for a row that cannot be selected
    bool shouldSelectRow(std::ptrdiff_t row) const;
    int heightOfRow(std::ptrdiff_t row) const;
    ListedGroup clickedGroup(std::ptrdiff_t row) const; // null, with a line in the log, for no row

    struct MenuItem {
        QString title; // null: stays as it is
        bool isEnabled = false;
    };
    enum MenuTag { Remove = 3, Edit = 4, HideUnhide = 5 };
    MenuItem validateMenuItem(int tag, const ListedGroup& clickedGroup) const;

    // --- Drag and drop (GroupDragging.cpp) ---
    bool writeRows(const std::vector<std::size_t>& indexes) const; // whether they may be dragged
    DropAnswer validateDrop(const GroupDrag& drag, std::ptrdiff_t row) const;
    bool acceptDrop(const GroupDrag& drag, std::ptrdiff_t row); // as validateDrop answered

    // --- Hiding and showing (GroupHiding.cpp) ---
    // The group says that it is hidden, or shown, whatever becomes of its items. True: all went well.
    bool hideGroup(const ListedGroup& group, bool collectErrors);
    bool unhideGroup(const ListedGroup& group, bool collectErrors);
    bool hideGroupWithName(std::string_view name, bool collectErrors);
    bool unhideGroupWithName(std::string_view name, bool collectErrors);

    // Nobody is asked anything. The reason goes to the log, as do the items that stayed visible.
    bool makeAutoHide(const QString& reason);
    void autoUnhideThread(); // once after each makeAutoHide; ends early when the user leaves
    bool autoUnhideHappened() const { return m_autoUnhideHappened; }
    void setAutoUnhideHappened(bool happened) { m_autoUnhideHappened = happened; } // in a former run

    // Paths of the items that the last passes left visible, until somebody has seen them.
    const std::vector<std::string>& leftVisible() const { return m_leftVisible; }
    void leftVisibleWasSeen();

    // --- The data file ---
    bool saveDataToDisk();                                                    // false: saveTrouble() says why
    const std::optional<Error>& saveTrouble() const { return m_saveTrouble; } // of the last save; lasting

public slots:
    // User actions; those that change items wait their turn, with the group that was meant when they came.
    void removeClickedGroupAction(const veilkeep::ListedGroup& clickedGroup);
    void removeSelectedRows() { removeClickedGroupAction(m_current); }
    void editGroup(const veilkeep::ListedGroup& clickedGroup);
    void editCell(const veilkeep::ListedGroup& group, const QString& typed); // goes on in the sheet
    void moveSelectedFiles(const veilkeep::ListedGroup& toGroup);
    void hideCurrentGroup();
    void unhideCurrentGroup();
    void commandRightKeyPressed();
    void commandLeftKeyPressed();
    void hideUnhideGroup(const veilkeep::ListedGroup& clickedGroup);
    void switchOnOff(int value);
    void autoHideChanged(bool autoHide); // of the current group
    void groupTableBecomesFirstResponder();

signals:
    void groupsChanged(); // rows, or what is in one
    void GroupsUpdated(); // after adding, removing, editing
    void currentGroupChanged();
    void editGroupRequested(const veilkeep::ListedGroup& group);
    void editCellRequested(const veilkeep::ListedGroup& group, const QString& typed);
    void leftVisibleChanged();
    void saveTroubleChanged();

private:
    class OneSave;
    enum class MarkState { Unknown, Set, Failed };

    void loadDataFromDisk();
    void setGroups(std::vector<ListedGroup> groups) { m_groups = std::move(groups); }
    void setDefaultImage(Group& group) const;
    void setImageNamed(Group& group, const std::string& name) const;
    std::optional<Bytes> imageFor(const std::string& iconPath) const;
    ListedGroup append(Group group);
    bool isListed(const ListedGroup& group) const { return rowOf(group).has_value(); }
    void setCurrent(const ListedGroup& group);
    void setSaveTrouble(std::optional<Error> trouble);
    void rowsChanged(); // tells and saves
    void change(const ListedGroup& group, const std::function<void(Group&)>& change);

    void setState(const ListedGroup& group, std::int8_t state);
    void hideOrShowCurrent(bool hides);
    bool isAutoHide(const ListedGroup& group) const {
        return group->autoHide().value_or(false) && !group->isHeaderRow();
    }
    std::vector<ListedGroup> autoHideGroups() const;
    bool hideTogether(const std::vector<ListedGroup>& groups);
    bool mayShowAutoHideItems(const ListedGroup& group) const;
    void setMark();
    void clearMark();
    void noteVisible(const ListedFile& file);
    bool isInAutoHideGroup(const ListedFile& file) const;
    std::vector<ListedFile> autoHideFiles(std::int32_t otherThan) const;
    void rememberLeftVisible(const std::vector<ListedFile>& files);

    const GroupViewControllerParts m_parts;
    std::vector<ListedGroup> m_groups;
    ListedGroup m_current;
    std::optional<Error> m_saveTrouble;
    bool m_itemsAreSavedFirst = false; // until they are: they have left a group that is gone
    int m_savesPutOff = 0;
    bool m_isToBeSaved = false;
    bool m_mayChange = true;
    bool m_autoUnhideHappened = false;
    MarkState m_markState = MarkState::Unknown;
    std::vector<std::string> m_leftVisible;
};

} // namespace veilkeep
