#include "requests/GroupRequests.h"

#include "core/filesystem/ItemAtPath.h"
#include "format/ErrorText.h"
#include "requests/RequestRules.h"
#include "session/MainWindowController.h"

#include <QCoreApplication>
#include <QObject>

#include <algorithm>
#include <cerrno>
#include <map>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupRequests)
};

} // namespace

QVariantMap groupRow(const Group& group, std::size_t items) {
    return {
        {QStringLiteral("name"), rowBytes(group.name())},
        {QStringLiteral("id"), qlonglong{group.groupID().value_or(0)}},
        {QStringLiteral("state"), group.state() != 0 ? QStringLiteral("hidden") : QStringLiteral("shown")},
        {QStringLiteral("autoHide"), group.autoHide().value_or(false)},
        {QStringLiteral("items"), static_cast<qlonglong>(items)},
        {QStringLiteral("icon"), rowBytes(group.iconPath())},
        {QStringLiteral("removable"), group.canBeRemoved()},
    };
}

void GroupRequests::tellGroups() {
    std::vector<QVariantMap> rows;
    for (const ListedGroup& group : m_work.groups.groups())
        if (!group->isHeaderRow())
            rows.push_back(
                groupRow(*group, m_work.controller.files().countOfGroup(group->groupID().value_or(0))));
    m_work.caller.listed(rows);
}

void GroupRequests::change() {
    const QString action = m_work.option(requestOption::action).toString();
    if (action == QLatin1String(groupAction::add))
        return add();
    const auto is = [&](const char* name) { return action == QLatin1String(name); };
    const bool isKnown = is(groupAction::remove) || is(groupAction::rename) || is(groupAction::icon) ||
                         is(groupAction::autoHide) || is(groupAction::order);
    if (!isKnown || !m_work.option(requestOption::group).isValid())
        return m_work.refuseAsUnknown();
    const ListedGroup group = m_work.groupNamedBy(requestOption::group);
    if (!group)
        return;
    if (is(groupAction::remove))
        remove(group);
    else if (is(groupAction::rename))
        rename(group);
    else if (is(groupAction::icon))
        setIcon(group);
    else if (is(groupAction::autoHide))
        setAutoHide(group);
    else
        order(group);
}

bool GroupRequests::mayBeNamed(const std::string& name) {
    const bool isName = !name.empty() && name.find('\0') == std::string::npos;
    if (!isName)
        m_work.fail(name, Texts::tr("This is no name for a group."));
    else if (m_work.groups.ifExistsGroupWithName(name))
        m_work.fail(name, Texts::tr("A group with this name exists already."));
    else
        return true;
    return false;
}

bool GroupRequests::mayBeEdited(const ListedGroup& group) {
    if (!group->canBeRemoved())
        m_work.fail(std::string(group->name()),
                    Texts::tr("The name and the icon of this group stay as they are."));
    return group->canBeRemoved();
}

void GroupRequests::add() {
    const bool hasName = m_work.option(requestOption::group).isValid();
    const std::string name = m_work.bytesOption(requestOption::group);
    if (hasName && !mayBeNamed(name))
        return;
    const ListedGroup group = m_work.groups.addGroup();
    if (hasName) {
        m_work.groups.setNewName(name, std::string(group->iconPath()), group);
        emit m_work.groups.GroupsUpdated();
    }
    m_work.caller.listed({groupRow(*group, m_work.controller.files().countOfGroup(*group->groupID()))});
}

// As in the window the group is selected first, with nothing filtered out: it is what is shown that moves.
void GroupRequests::remove(const ListedGroup& group) {
    GroupViewController& groups = m_work.groups;
    const ListedGroup before = groups.currentGroup();
    const auto select = [&](const ListedGroup& selected) {
        if (const auto row = groups.rowOf(selected))
            groups.selectRow(static_cast<std::ptrdiff_t>(*row));
    };
    select(group);
    m_work.controller.filterController().setGroup(group->groupID());
    const bool isRemovable = group->canBeRemoved();
    if (!groups.removeGroup(group)) {
        m_work.status = isRemovable ? RequestStatus::Refused : RequestStatus::SomeFailed;
        if (isRemovable)
            m_work.caller.message(Texts::tr("Nothing was removed."));
    }
    select(before);
}

void GroupRequests::rename(const ListedGroup& group) {
    const std::string name = m_work.bytesOption(requestOption::newName);
    if (!m_work.option(requestOption::newName).isValid())
        return m_work.refuseAsUnknown();
    if (!mayBeEdited(group) || group->name() == name || !mayBeNamed(name))
        return;
    m_work.groups.setNewName(name, std::string(group->iconPath()), group);
    emit m_work.groups.GroupsUpdated();
}

void GroupRequests::setIcon(const ListedGroup& group) {
    const std::string icon = m_work.bytesOption(requestOption::icon);
    if (icon.empty())
        return m_work.refuseAsUnknown();
    if (!mayBeEdited(group))
        return;
    if (icon.starts_with('/') && !openItemAt(icon))
        return m_work.fail(icon, workerErrorText(workerErrorFromErrno(errno)));
    m_work.groups.setNewName(std::string(group->name()), icon, group);
    emit m_work.groups.GroupsUpdated();
}

void GroupRequests::setAutoHide(const ListedGroup& group) {
    const QVariant autoHide = m_work.option(requestOption::autoHide);
    if (autoHide.typeId() != QMetaType::Bool)
        return m_work.refuseAsUnknown();
    m_work.groups.setAutoHide(autoHide.toBool(), group);
}

void GroupRequests::order(const ListedGroup& group) {
    const auto ownRow = m_work.groups.rowOf(group);
    if (!ownRow || *ownRow < GroupViewController::firstMovableRow)
        return m_work.fail(std::string(group->name()), Texts::tr("This group stays where it is."));
    if (const auto row = wantedRow(*ownRow))
        m_work.groups.moveGroup(group, *row);
}

// Where it is to lie in the end.
std::optional<std::size_t> GroupRequests::wantedRow(std::size_t ownRow) {
    constexpr std::size_t first = GroupViewController::firstMovableRow;
    if (const qlonglong position = m_work.option(requestOption::position).toLongLong(); position > 0) {
        const std::size_t last = m_work.groups.groups().size() - 1;
        return first + std::min(static_cast<std::size_t>(position) - 1, last - first);
    }
    if (!m_work.option(requestOption::before).isValid()) {
        m_work.refuseAsUnknown();
        return std::nullopt;
    }
    const ListedGroup before = m_work.groupNamedBy(requestOption::before);
    if (!before)
        return std::nullopt;
    const std::size_t row = *m_work.groups.rowOf(before);
    if (row >= first)
        return ownRow < row ? row - 1 : row;
    m_work.fail(std::string(before->name()), Texts::tr("No group can stand before this one."));
    return std::nullopt;
}

void GroupRequests::moveItems() {
    if (!m_work.option(requestOption::group).isValid())
        return m_work.refuseAsUnknown();
    const ListedGroup group = m_work.groupNamedBy(requestOption::group);
    if (!group)
        return;
    FilesViewController::Files moved;
    for (const std::string& path : m_work.request.paths)
        if (ListedFile file = m_work.listedInAnyForm(path))
            moved.push_back(std::move(file));
        else
            m_work.fail(path, Texts::tr("The item is not in the list."));
    m_work.controller.moveFiles(moved, group->groupID().value_or(GroupViewController::allFilesGroup()));
    m_work.controller.saveDataToDisk();
    for (const ListedFile& file : moved)
        m_work.caller.itemDone(std::string(file->path()), std::string(file->path()));
}

// All items are those of the group that holds them all.
ListedGroup GroupRequests::groupOrAll() {
    if (m_work.option(requestOption::group).isValid())
        return m_work.groupNamedBy(requestOption::group);
    const auto& groups = m_work.groups.groups();
    const auto all = std::ranges::find_if(groups, [](const ListedGroup& group) {
        return !group->isHeaderRow() && group->groupID() == GroupViewController::allFilesGroup();
    });
    if (all != groups.end())
        return *all;
    m_work.caller.message(Texts::tr("There is no group of all items."));
    m_work.status = RequestStatus::SomeFailed;
    return nullptr;
}

void GroupRequests::hideItems() {
    moveAll(BatchReport::Move::Hide);
}

void GroupRequests::unhideItems() {
    moveAll(BatchReport::Move::Unhide);
}

void GroupRequests::moveAll(BatchReport::Move move) {
    const ListedGroup group = groupOrAll();
    if (!group)
        return;
    HideOperations& operations = m_work.controller.hideOperations();
    const auto wanted = m_work.controller.getAllFilesOfGroup(group->groupID());
    const bool collects = !m_work.isInteractive();
    BatchReport report(m_work, move);
    operations.clearErrorList();
    if (move == BatchReport::Move::Hide)
        m_work.groups.hideGroup(group, collects);
    else
        m_work.groups.unhideGroup(group, collects);
    operations.clearErrorList();
    if (wanted)
        report.tellLastBatch(*wanted);
    report.finish();
}

void GroupRequests::autoHide() {
    HideOperations& operations = m_work.controller.hideOperations();
    std::map<std::string, QString, std::less<>> reasons;
    QObject listener;
    QObject::connect(&operations, &HideOperations::batchRunningChanged, &listener, [&](bool isRunning) {
        if (!isRunning)
            for (const MovedItem& item : operations.lastBatch())
                if (!item.reason.isEmpty())
                    reasons[std::string(item.file->originalPath())] = item.reason;
    });
    const bool allWell = m_work.groups.makeAutoHide(QStringLiteral("veilkeepctl autohide"));
    if (m_work.window)
        m_work.window->hideWindow();
    for (const std::string& path : m_work.groups.leftVisible()) {
        if (!m_work.controller.findFileWithPath(path))
            continue; // hidden since
        const auto reason = reasons.find(path);
        m_work.fail(path, reason == reasons.end() ? Texts::tr("The item stayed visible.") : reason->second);
    }
    if (!allWell && m_work.status == RequestStatus::AllWell) {
        m_work.caller.message(Texts::tr("Some errors have been occured while hiding files"));
        m_work.status = RequestStatus::SomeFailed;
    }
}

void GroupRequests::autoUnhide() {
    if (m_work.groups.autoUnhideHappened()) {
        m_work.caller.message(Texts::tr("The AutoHide groups are shown already."));
        return;
    }
    BatchReport report(m_work, BatchReport::Move::Unhide);
    QObject listener;
    QObject::connect(&m_work.controller.hideOperations(), &HideOperations::batchRunningChanged, &listener,
                     [&](bool isRunning) {
                         if (!isRunning)
                             report.tellLastBatch();
                     });
    m_work.groups.autoUnhideThread();
    report.finish();
}

} // namespace veilkeep
