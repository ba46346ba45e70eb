#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "filelist/Texts.h"
#include "groups/GroupViewController.h"

#include <QScopeGuard>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::int8_t shown = 0, hidden = 1;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupViewController)
};

using Reasons = std::map<ListedFile, std::string>; // why an item was not moved

void addReasons(Reasons& reasons, const std::vector<MovedItem>& batch) {
    for (const MovedItem& item : batch)
        if (!item.reason.isEmpty())
            reasons[item.file] = item.reason.toStdString();
}

void logItems(std::string_view what, const std::vector<ListedFile>& files, const Reasons& reasons) {
    for (const ListedFile& file : files) {
        const auto reason = reasons.find(file);
        logLine(std::string(what) + ": " + std::string(file->path()) +
                (reason == reasons.end() ? std::string() : ": " + reason->second));
    }
}

} // namespace

// What is changed meanwhile is saved at its end, once.
class GroupViewController::OneSave {
public:
    explicit OneSave(GroupViewController& groups) : m_groups(groups) { ++m_groups.m_savesPutOff; }
    ~OneSave() {
        if (--m_groups.m_savesPutOff == 0 && m_groups.m_isToBeSaved)
            m_groups.saveDataToDisk();
    }
    OneSave(const OneSave&) = delete;
    OneSave& operator=(const OneSave&) = delete;

private:
    GroupViewController& m_groups;
};

// --- A group ---

bool GroupViewController::hideGroup(const ListedGroup& group, bool collectErrors) {
    if (!isListed(group) || group->isHeaderRow())
        return false;
    setState(group, hidden);
    const auto groupID = group->groupID();
    return !groupID || m_parts.files.hideAllFilesOfGroup(*groupID, collectErrors);
}

bool GroupViewController::unhideGroup(const ListedGroup& group, bool collectErrors) {
    if (!isListed(group) || group->isHeaderRow())
        return false;
    if (mayShowAutoHideItems(group))
        setMark();
    setState(group, shown);
    const auto groupID = group->groupID();
    return !groupID || m_parts.files.unhideAllFilesOfGroup(*groupID, collectErrors);
}

bool GroupViewController::hideGroupWithName(std::string_view name, bool collectErrors) {
    return hideGroup(groupForName(name), collectErrors);
}

bool GroupViewController::unhideGroupWithName(std::string_view name, bool collectErrors) {
    return unhideGroup(groupForName(name), collectErrors);
}

void GroupViewController::setState(const ListedGroup& group, std::int8_t state) {
    if (group->state() != state)
        change(group, [&](Group& changed) { changed.setState(state); });
}

void GroupViewController::hideCurrentGroup() {
    hideOrShowCurrent(true);
}

void GroupViewController::unhideCurrentGroup() {
    hideOrShowCurrent(false);
}

void GroupViewController::switchOnOff(int value) {
    hideOrShowCurrent(value != 0);
}

void GroupViewController::commandRightKeyPressed() {
    if (m_current && m_current->state() == shown)
        hideCurrentGroup();
}

void GroupViewController::commandLeftKeyPressed() {
    if (m_current && m_current->state() == hidden)
        unhideCurrentGroup();
}

// What the table shows of the group; all of it where another group has been selected meanwhile.
void GroupViewController::hideOrShowCurrent(bool hides) {
    m_parts.turns.run([this, hides, group = m_current] {
        if (!isListed(group))
            return;
        if (m_current != group) {
            hides ? hideGroup(group, false) : unhideGroup(group, false);
            return;
        }
        if (!hides && mayShowAutoHideItems(group))
            setMark();
        setState(group, hides ? hidden : shown);
        if (const auto files = m_parts.files.getAllFilesOfCurrentGroup(); !files.empty())
            hides ? m_parts.files.hideFiles(files, false) : m_parts.files.unhideFiles(files, false);
        m_parts.files.removeSelection();
    });
}

void GroupViewController::hideUnhideGroup(const ListedGroup& clickedGroup) {
    if (!clickedGroup)
        return;
    m_parts.turns.run([this, clickedGroup] {
        if (clickedGroup->state() == shown)
            hideGroup(clickedGroup, false);
        else
            unhideGroup(clickedGroup, false);
    });
}

// --- AutoHide ---

void GroupViewController::setAutoHide(bool autoHide, std::string_view forGroup) {
    setAutoHide(autoHide, groupForName(forGroup));
}

void GroupViewController::setAutoHide(bool autoHide, const ListedGroup& forGroup) {
    if (autoHide && isListed(forGroup))
        setMark();
    change(forGroup, [&](Group& group) { group.setAutoHide(autoHide); });
}

void GroupViewController::autoHideChanged(bool autoHide) {
    setAutoHide(autoHide, m_current);
    if (m_parts.sounds)
        m_parts.sounds->playSound("AutoHideSound");
}

bool GroupViewController::makeAutoHide(const QString& reason) {
    const std::vector<ListedGroup> groups = autoHideGroups();
    logLine("Hiding the AutoHide groups, " + std::to_string(groups.size()) +
            " of them: " + reason.toStdString());
    HideOperations& operations = m_parts.files.hideOperations();
    const std::size_t errorsBefore = operations.errors().size();
    const bool allWell = groups.empty() || hideTogether(groups);
    m_autoUnhideHappened = false;
    operations.dropRepeatedErrors(errorsBefore);
    std::vector<ListedFile> left = autoHideFiles(File::Hidden);
    std::erase_if(left, [](const ListedFile& file) {
        return file->stateFromPath() != File::Visible || !itemExistsAt(std::string(file->path()));
    });
    Reasons reasons;
    addReasons(reasons, operations.lastBatch());
    logItems("Stayed visible", left, reasons);
    rememberLeftVisible(left);
    if (allWell && left.empty())
        clearMark();
    else
        setMark();
    return allWell;
}

// In the order of the groups, but as one batch: on a slow disk each batch's saving takes its time, of which
// there is little before the computer sleeps.
bool GroupViewController::hideTogether(const std::vector<ListedGroup>& groups) {
    const OneSave oneSave(*this);
    m_parts.files.setNobodyThere(true);
    const auto somebodyAfter = qScopeGuard([this] { m_parts.files.setNobodyThere(false); });
    FilesViewController::Files batch;
    for (const ListedGroup& group : groups) {
        setState(group, hidden);
        const auto files = m_parts.files.getAllFilesOfGroup(group->groupID());
        if (files)
            batch.insert(batch.end(), files->begin(), files->end());
    }
    const bool allWell = m_parts.files.hideFiles(batch, true);
    m_parts.files.removeSelection();
    return allWell;
}

void GroupViewController::autoUnhideThread() {
    if (m_autoUnhideHappened)
        return;
    const std::vector<ListedGroup> groups = autoHideGroups();
    logLine("Showing the AutoHide groups, " + std::to_string(groups.size()) + " of them");
    HideOperations& operations = m_parts.files.hideOperations();
    bool errors = false;
    Reasons reasons;
    {
        const OneSave oneSave(*this);
        m_parts.files.setAutomatic(true);
        const auto onDemandAfter = qScopeGuard([this] { m_parts.files.setAutomatic(false); });
        for (const ListedGroup& group : groups) {
            if (m_parts.turns.isLeaving())
                break;
            errors = !unhideGroup(group, true) || errors;
            addReasons(reasons, operations.lastBatch());
        }
    }
    m_autoUnhideHappened = true;
    logItems("Not brought back", autoHideFiles(File::Visible), reasons);
    if (m_parts.turns.isLeaving()) {
        logLine("The user leaves; the AutoHide groups were not shown to their end");
        return;
    }
    if (!errors)
        return;
    operations.showErrorsMessage(Texts::tr("Some errors have been occured while unhiding files"), {},
                                 {Texts::tr("OK")});
    operations.clearErrorList();
}

std::vector<ListedGroup> GroupViewController::autoHideGroups() const {
    std::vector<ListedGroup> groups;
    std::ranges::copy_if(m_groups, std::back_inserter(groups),
                         [this](const ListedGroup& group) { return isAutoHide(group); });
    return groups;
}

bool GroupViewController::isInAutoHideGroup(const ListedFile& file) const {
    return std::ranges::any_of(m_groups, [&](const ListedGroup& group) {
        return isAutoHide(group) &&
               (group->groupID() == CurrentGroup::allFiles || group->groupID() == file->groupID());
    });
}

std::vector<ListedFile> GroupViewController::autoHideFiles(std::int32_t otherThan) const {
    std::vector<ListedFile> files;
    std::ranges::copy_if(m_parts.files.files().all(), std::back_inserter(files), [&](const ListedFile& file) {
        return file->state() != otherThan && isInAutoHideGroup(file);
    });
    return files;
}

void GroupViewController::rememberLeftVisible(const std::vector<ListedFile>& files) {
    const std::set<std::string> known(m_leftVisible.begin(), m_leftVisible.end());
    const std::size_t before = known.size();
    for (const ListedFile& file : files)
        if (std::string path(file->path()); !known.contains(path))
            m_leftVisible.push_back(std::move(path));
    if (m_leftVisible.size() != before)
        emit leftVisibleChanged();
}

void GroupViewController::leftVisibleWasSeen() {
    if (!std::exchange(m_leftVisible, {}).empty())
        emit leftVisibleChanged();
}

// --- The mark that items of AutoHide groups may be visible ---

bool GroupViewController::mayShowAutoHideItems(const ListedGroup& group) const {
    return isAutoHide(group) || (group->groupID() == CurrentGroup::allFiles && !autoHideGroups().empty());
}

void GroupViewController::setMark() {
    if (m_markState == MarkState::Set)
        return;
    const auto set = m_parts.mark.set();
    m_markState = set ? MarkState::Set : MarkState::Failed;
    if (!set)
        logError("Should this program be ended by force, items of AutoHide groups stay visible", set.error());
}

void GroupViewController::clearMark() {
    if (m_markState != MarkState::Set && !m_parts.mark.isSet())
        return;
    m_markState = MarkState::Unknown;
    if (const auto cleared = m_parts.mark.clear(); !cleared)
        logError("The mark of the AutoHide groups could not be taken away", cleared.error());
}

// However an item of an AutoHide group came to be visible.
void GroupViewController::noteVisible(const ListedFile& file) {
    if (m_markState == MarkState::Unknown && file->state() == File::Visible && isInAutoHideGroup(file))
        setMark();
}

} // namespace veilkeep
