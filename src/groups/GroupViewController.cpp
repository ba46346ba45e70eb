#include "groups/GroupViewController.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "filelist/LoadingTrouble.h"
#include "filelist/Texts.h"
#include "groups/EnteredName.h"
#include "groups/GroupNames.h"

#include <algorithm>
#include <utility>

namespace veilkeep {
namespace {

constexpr int headerHeight = 22, groupHeight = 50;
constexpr const char* newGroupIcon = "folder-generic";

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupViewController)
};

} // namespace

GroupViewController::GroupViewController(const GroupViewControllerParts& parts) : m_parts(parts) {
    const FileList& files = m_parts.files.files();
    connect(&files, &FileList::fileChanged, this, &GroupViewController::noteVisible);
    connect(&files, &FileList::filesAppended, this, [this, &files](std::size_t first, std::size_t count) {
        for (std::size_t position = first; position < first + count; ++position)
            noteVisible(files.all()[position]);
    });
}

void GroupViewController::start(bool mayChange) {
    m_mayChange = mayChange;
    m_markState = MarkState::Unknown;
    loadDataFromDisk();
    if (m_groups.empty())
        initMainGroupRows();
    else
        saveDataToDisk();
    emit groupsChanged();
    const auto first =
        std::ranges::find_if(m_groups, [](const ListedGroup& group) { return !group->isHeaderRow(); });
    setCurrent(first == m_groups.end() ? nullptr : *first);
}

// --- The data file ---

// What could not be read is replaced at once, so that the user is told once.
void GroupViewController::loadDataFromDisk() {
    GroupsInfoFile::Loaded loaded = m_parts.dataFile.load();
    std::vector<ListedGroup> groups;
    for (Group& group : loaded.groups.value_or(std::vector<Group>())) {
        if (group.name() == groupName::allFiles)
            setDefaultImage(group);
        groups.push_back(std::make_shared<Group>(std::move(group)));
    }
    setGroups(std::move(groups));
    m_isToBeSaved = loaded.trouble && !m_parts.dataFile.isOfNewerVersion();
    if (loaded.trouble)
        tellLoadingTrouble(m_parts.alerts, StoredList::Groups, m_parts.dataFile.file(), *loaded.trouble,
                           loaded.earlierCopy);
}

bool GroupViewController::saveDataToDisk() {
    GroupsInfoFile& file = m_parts.dataFile;
    if (!m_mayChange || (!m_isToBeSaved && (file.isOfNewerVersion() || file.isAsLeft())))
        return true;
    if (m_itemsAreSavedFirst && !m_parts.files.saveDataToDisk()) {
        setSaveTrouble(m_parts.files.saveTrouble());
        return false;
    }
    m_itemsAreSavedFirst = false;
    const auto saved = file.save(m_groups);
    if (!saved)
        logError("Failed to save the groups to file " + file.path(), saved.error());
    m_isToBeSaved = !saved;
    setSaveTrouble(saved ? std::nullopt : std::optional(saved.error()));
    return saved.has_value();
}

void GroupViewController::setSaveTrouble(std::optional<Error> trouble) {
    if (trouble == m_saveTrouble)
        return;
    m_saveTrouble = std::move(trouble);
    emit saveTroubleChanged();
}

void GroupViewController::rowsChanged() {
    emit groupsChanged();
    m_isToBeSaved = true;
    if (m_savesPutOff == 0)
        saveDataToDisk();
}

// This controller has made the record, and not as a constant.
void GroupViewController::change(const ListedGroup& group, const std::function<void(Group&)>& change) {
    if (!isListed(group))
        return;
    const PropertyDictionary before = group->properties();
    change(const_cast<Group&>(*group));
    if (!(group->properties() == before))
        rowsChanged();
}

// --- Rows ---

void GroupViewController::initMainGroupRows() {
    Group all = Group::groupWithName(groupName::allFiles, uniqueGroupID());
    all.setGroupID(CurrentGroup::allFiles);
    all.setCanBeRemoved(false);
    setDefaultImage(all);
    append(std::move(all));
    append(Group::headerGroupWithName(groupName::customGroups));
    for (const auto& [name, image] : {std::pair(groupName::secretPictures, "folder-pictures"),
                                      std::pair(groupName::privateFiles, "folder_private")}) {
        Group group = Group::groupWithName(name, uniqueGroupID());
        setImageNamed(group, image);
        group.setIconPath(image);
        append(std::move(group));
    }
    rowsChanged();
}

void GroupViewController::makeAutoHideExampleGroup() {
    Group group = Group::groupWithName(groupName::autoHide, uniqueGroupID());
    setDefaultImage(group);
    group.setAutoHide(true);
    append(std::move(group));
    rowsChanged();
}

ListedGroup GroupViewController::append(Group group) {
    m_groups.push_back(std::make_shared<Group>(std::move(group)));
    return m_groups.back();
}

ListedGroup GroupViewController::groupForName(std::string_view name) const {
    const auto found =
        std::ranges::find_if(m_groups, [&](const ListedGroup& group) { return group->name() == name; });
    return found == m_groups.end() ? nullptr : *found;
}

std::vector<std::string> GroupViewController::groupsNames() const {
    std::vector<std::string> names;
    names.reserve(m_groups.size());
    for (const ListedGroup& group : m_groups)
        if (!group->isHeaderRow())
            names.emplace_back(group->name());
    return names;
}

std::string GroupViewController::uniqueGroupName() const {
    std::string name = groupName::newGroup;
    for (int number = 1; ifExistsGroupWithName(name); ++number)
        name = std::string(groupName::newGroup) + ' ' + std::to_string(number);
    return name;
}

std::int64_t GroupViewController::uniqueGroupID() const {
    std::int64_t candidate = 0;
    for (const ListedGroup& group : m_groups)
        candidate += group->groupID().value_or(0) == candidate;
    return candidate;
}

ListedGroup GroupViewController::addGroup() {
    const std::int64_t groupID = uniqueGroupID();
    Group group = Group::groupWithName(uniqueGroupName(), groupID);
    setImageNamed(group, std::string(newGroupIcon) + ".png");
    group.setIconPath(newGroupIcon);
    const ListedGroup added = append(std::move(group));
    rowsChanged();
    emit GroupsUpdated();
    return added;
}

bool GroupViewController::removeGroup(const ListedGroup& group) {
    if (!isListed(group))
        return false;
    const QString name = shownGroupName(*group);
    if (!group->canBeRemoved()) {
        m_parts.alerts.ADRunInformationalAlertSheet(
            Alert::Window::Main, Texts::tr("Unable to remove group \"%1\".").arg(name),
            Texts::tr("Sorry, but this group cannot be removed because it contains all of files."),
            Texts::tr("OK"));
        return false;
    }
    FilesViewController::Files shown = m_parts.files.getAllFilesOfCurrentGroup();
    const ListedGroup current = m_current; // another may be soon
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, Texts::tr("Are you sure you want to remove \"%1\" group?").arg(name),
        Texts::tr("All files of this group will be moved to the \"All Files\" group."), Texts::tr("Remove"),
        Texts::tr("Cancel"));
    if (answer != Alerts::defaultAnswer || !isListed(group))
        return false;
    if (m_current == current)
        shown = m_parts.files.getAllFilesOfCurrentGroup(); // items may have come meanwhile
    m_parts.files.moveFiles(shown, allFilesGroup());
    m_itemsAreSavedFirst = true;
    std::erase(m_groups, group);
    if (m_current == group)
        setCurrent(m_groups.empty() ? nullptr : m_groups.front());
    rowsChanged();
    emit GroupsUpdated();
    return true;
}

void GroupViewController::setNewName(std::string_view newName, const std::string& andIconPath,
                                     std::string_view forGroup) {
    setNewName(newName, andIconPath, groupForName(forGroup));
}

void GroupViewController::setNewName(std::string_view newName, const std::string& andIconPath,
                                     const ListedGroup& forGroup) {
    change(forGroup, [&](Group& group) {
        group.setName(newName);
        if (auto image = imageFor(andIconPath))
            group.setIconData(std::move(*image));
        else if (!m_parts.images && group.iconPath() != andIconPath)
            group.setIconData({}); // to be filled when it is drawn
        group.setIconPath(andIconPath);
    });
}

bool GroupViewController::renameInPlace(const ListedGroup& group, const QString& typed) {
    if (!isListed(group) || !group->canBeRemoved())
        return true;
    const EnteredName entered(*this, *group, typed);
    if (entered.fault) {
        m_parts.alerts.beginInformationalAlertSheet(
            EnteredName::faultText(*entered.fault),
            Texts::tr("\"%1\" keeps its name until you enter another one.").arg(shownGroupName(*group)));
        return false;
    }
    if (entered.name == group->name())
        return true;
    setNewName(entered.name, std::string(group->iconPath()), group);
    emit GroupsUpdated();
    return true;
}

void GroupViewController::incFilesOfGroup(std::string_view name) {
    change(groupForName(name), [](Group& group) { group.incCountOfFiles(); });
}

void GroupViewController::decFilesOfGroup(std::string_view name) {
    change(groupForName(name), [](Group& group) { group.decCountOfFiles(); });
}

// --- Images ---

void GroupViewController::setDefaultImage(Group& group) const {
    group.setIconPath(Group::defaultIconName);
    group.setIconData({});
    setImageNamed(group, Group::defaultIconName);
}

void GroupViewController::setImageNamed(Group& group, const std::string& name) const {
    if (auto image = m_parts.images ? m_parts.images->imageNamed(name) : std::nullopt)
        group.setIconData(std::move(*image));
}

std::optional<Bytes> GroupViewController::imageFor(const std::string& iconPath) const {
    if (!m_parts.images)
        return std::nullopt;
    return iconPath.starts_with('/') && itemExistsAt(iconPath) ? m_parts.images->imageAtPath(iconPath)
                                                               : m_parts.images->imageNamed(iconPath);
}

// Not saved for its own sake: nobody has changed anything.
void GroupViewController::fillIcon(const ListedGroup& group) {
    if (!isListed(group) || group->isHeaderRow() || !group->iconData().empty())
        return;
    if (auto image = imageFor(std::string(group->iconPath())))
        const_cast<Group&>(*group).setIconData(std::move(*image));
}

// --- The table ---

std::string GroupViewController::currentGroupName() const {
    return m_current ? std::string(m_current->name()) : std::string();
}

std::optional<std::int64_t> GroupViewController::currentGroupID() const {
    return m_current ? m_current->groupID() : std::nullopt;
}

std::optional<std::size_t> GroupViewController::rowOf(const ListedGroup& group) const {
    const auto found = std::ranges::find(m_groups, group);
    return found == m_groups.end() ? std::nullopt
                                   : std::optional(static_cast<std::size_t>(found - m_groups.begin()));
}

void GroupViewController::selectRow(std::ptrdiff_t row) {
    if (shouldSelectRow(row))
        setCurrent(m_groups[static_cast<std::size_t>(row)]);
}

void GroupViewController::setCurrent(const ListedGroup& group) {
    if (m_current == group)
        return;
    m_current = group;
    const std::int64_t groupID = currentGroupID().value_or(CurrentGroup::allFiles);
    m_parts.selection.setCurrentGroupID(groupID);
    m_parts.files.filterController().setGroup(groupID);
    emit m_parts.files.numberOfFilesOfCurrentGroupChanged();
    emit currentGroupChanged();
}

void GroupViewController::groupTableBecomesFirstResponder() {
    m_parts.files.removeSelection();
    emit m_parts.files.numberOfFilesOfCurrentGroupChanged();
}

bool GroupViewController::shouldSelectRow(std::ptrdiff_t row) const {
    return row >= 0 && row < std::ssize(m_groups) && !m_groups[static_cast<std::size_t>(row)]->isHeaderRow();
}

int GroupViewController::heightOfRow(std::ptrdiff_t row) const {
    const bool isHeader =
        row >= 0 && row < std::ssize(m_groups) && m_groups[static_cast<std::size_t>(row)]->isHeaderRow();
    return isHeader ? headerHeight : groupHeight;
}

ListedGroup GroupViewController::clickedGroup(std::ptrdiff_t row) const {
    if (row >= 0 && row < std::ssize(m_groups))
        return m_groups[static_cast<std::size_t>(row)];
    logLine("Can't determine clicked group, clicked row " + std::to_string(row) + " out of bounds");
    return nullptr;
}

GroupViewController::MenuItem GroupViewController::validateMenuItem(int tag,
                                                                    const ListedGroup& clickedGroup) const {
    if (!clickedGroup)
        return {};
    if (tag == Remove || tag == Edit)
        return {{}, clickedGroup->canBeRemoved()};
    if (tag != HideUnhide)
        return {{}, true};
    const bool isSwitchOn = m_current && m_current->state() != 0;
    return {Texts::tr("%1 \"%2\" Group")
                .arg(isSwitchOn ? Texts::tr("Unhide") : Texts::tr("Hide"), shownGroupName(*clickedGroup)),
            true};
}

void GroupViewController::removeClickedGroupAction(const ListedGroup& clickedGroup) {
    if (clickedGroup)
        m_parts.turns.run([this, clickedGroup] { removeGroup(clickedGroup); });
}

void GroupViewController::editGroup(const ListedGroup& clickedGroup) {
    if (!clickedGroup)
        return;
    emit editGroupRequested(clickedGroup);
    emit GroupsUpdated();
}

void GroupViewController::editCell(const ListedGroup& group, const QString& typed) {
    if (group)
        emit editCellRequested(group, typed);
}

} // namespace veilkeep
