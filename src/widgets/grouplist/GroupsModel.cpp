#include "widgets/grouplist/GroupsModel.h"

#include "groups/GroupNames.h"
#include "widgets/controls/RowRuns.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(GroupsModel)
};

QString countText(std::size_t count) {
    return count == 1 ? Texts::tr("1 item")
                      : Texts::tr("%1 items").arg(QLocale().toString(qulonglong(count)));
}

QString stateText(const Group& group) {
    return group.state() == 0 ? Texts::tr("shown") : Texts::tr("hidden");
}

bool isAutoHide(const Group& group) {
    return group.autoHide().value_or(false);
}

bool isOfAllFiles(const Group& group) {
    return group.groupID() == GroupViewController::allFilesGroup();
}

// What goes without saying is left out: that all files, or an AutoHide group, are shown.
QString detailText(const Group& group, std::size_t count) {
    QStringList marks;
    if (isAutoHide(group))
        marks << Texts::tr("AutoHide");
    if (group.state() != 0 || (!isAutoHide(group) && !isOfAllFiles(group)))
        marks << stateText(group);
    const QString items = countText(count);
    return marks.isEmpty() ? items : Texts::tr("%1 · %2").arg(marks.join(QLatin1String(", ")), items);
}

QString accessibleText(const Group& group, std::size_t count) {
    QStringList texts{shownGroupName(group)};
    if (!group.isHeaderRow())
        texts << stateText(group) << countText(count);
    if (isAutoHide(group))
        texts << Texts::tr("AutoHide");
    return texts.join(QLatin1String(", "));
}

} // namespace

GroupsModel::GroupsModel(GroupViewController& groups, const FileList& files, QObject* parent)
    : QAbstractListModel(parent), m_groups(groups), m_files(files) {
    m_recount.setSingleShot(true);
    m_recount.setInterval(0);
    connect(&m_recount, &QTimer::timeout, this, &GroupsModel::tellChanges);
    const auto recountSoon = qOverload<>(&QTimer::start);
    connect(&files, &FileList::wasAssigned, &m_recount, recountSoon);
    connect(&files, &FileList::filesAppended, &m_recount, recountSoon);
    connect(&files, &FileList::filesRemoved, &m_recount, recountSoon);
    connect(&files, &FileList::fileChanged, &m_recount, recountSoon);
    connect(&groups, &GroupViewController::groupsChanged, this, &GroupsModel::update);
    update();
}

ListedGroup GroupsModel::group(const QModelIndex& index) const {
    const bool isRow = index.isValid() && index.model() == this && index.row() < rowCount();
    return isRow ? m_rows[static_cast<std::size_t>(index.row())].group : nullptr;
}

// An icon that cannot be found is looked for once, not at each drawing.
ListedGroup GroupsModel::groupWithIcon(const QModelIndex& index) const {
    const ListedGroup shown = group(index);
    if (shown && !std::exchange(m_rows[static_cast<std::size_t>(index.row())].isIconTried, true))
        m_groups.fillIcon(shown);
    return shown;
}

QModelIndex GroupsModel::indexOf(const ListedGroup& group) const {
    const auto found = std::ranges::find(m_rows, group, &Row::group);
    return found == m_rows.end() ? QModelIndex() : index(static_cast<int>(found - m_rows.begin()));
}

int GroupsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant GroupsModel::data(const QModelIndex& index, int role) const {
    const ListedGroup shown = group(index);
    if (!shown)
        return {};
    const std::size_t count = m_rows[static_cast<std::size_t>(index.row())].count;
    switch (role) {
    case Qt::DisplayRole:
        return shownGroupName(*shown);
    case Qt::AccessibleTextRole:
        return accessibleText(*shown, count);
    case DetailRole:
        return shown->isHeaderRow() ? QString() : detailText(*shown, count);
    case IsHeaderRole:
        return shown->isHeaderRow();
    default:
        return {};
    }
}

Qt::ItemFlags GroupsModel::flags(const QModelIndex& index) const {
    const ListedGroup shown = group(index);
    if (!shown)
        return Qt::NoItemFlags;
    if (shown->isHeaderRow())
        return Qt::ItemNeverHasChildren;
    const bool isMovable = m_groups.writeRows({static_cast<std::size_t>(index.row())});
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled | Qt::ItemNeverHasChildren |
           (isMovable ? Qt::ItemIsDragEnabled : Qt::NoItemFlags) |
           (shown->canBeRemoved() ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

std::size_t GroupsModel::countOf(const Group& group) const {
    const auto groupID = group.groupID();
    return group.isHeaderRow() || !groupID ? 0 : m_files.countOfGroup(*groupID);
}

GroupsModel::Row GroupsModel::rowFor(const ListedGroup& group) const {
    return {group, group->properties(), countOf(*group)};
}

// --- From the rows as they were to those as they are ---

void GroupsModel::update() {
    m_isUpdating = true;
    removeGone();
    for (int row = 0; row < std::ssize(m_groups.groups()); ++row)
        bring(row);
    m_isUpdating = false;
    tellChanges();
}

void GroupsModel::removeGone() {
    const auto isGone = [this](int row) {
        return !m_groups.rowOf(m_rows[static_cast<std::size_t>(row)].group);
    };
    for (int last = rowCount() - 1; last >= 0; --last) {
        if (!isGone(last))
            continue;
        int first = last;
        while (first > 0 && isGone(first - 1))
            --first;
        beginRemoveRows({}, first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        endRemoveRows();
        last = first;
    }
}

// Those above are in their places already.
void GroupsModel::bring(int row) {
    const auto& wanted = m_groups.groups();
    const auto at = [&](int number) { return m_rows[static_cast<std::size_t>(number)].group; };
    const ListedGroup group = wanted[static_cast<std::size_t>(row)];
    const QModelIndex found = indexOf(group);
    if (!found.isValid())
        insertAt(row);
    else if (found.row() == row + 1) // the one in its place has gone down
        move(row, std::min(static_cast<int>(*m_groups.rowOf(at(row))), rowCount() - 1));
    else if (found.row() != row)
        move(found.row(), row);
}

void GroupsModel::insertAt(int row) {
    const auto& wanted = m_groups.groups();
    const auto first = wanted.begin() + row;
    const auto end = std::find_if(first, wanted.end(), [this](const ListedGroup& each) { return has(each); });
    std::vector<Row> rows;
    std::transform(first, end, std::back_inserter(rows),
                   [this](const ListedGroup& each) { return rowFor(each); });
    beginInsertRows({}, row, row + static_cast<int>(rows.size()) - 1);
    m_rows.insert(m_rows.begin() + row, std::make_move_iterator(rows.begin()),
                  std::make_move_iterator(rows.end()));
    endInsertRows();
}

void GroupsModel::move(int from, int to) {
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    const auto first = m_rows.begin();
    if (to > from)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
    endMoveRows();
}

void GroupsModel::tellChanges() {
    forEachRun(
        rowCount(), [this](int row) { return noteChange(m_rows[static_cast<std::size_t>(row)]); },
        [this](int first, int last) { emit dataChanged(index(first), index(last)); });
}

bool GroupsModel::noteChange(Row& row) const {
    const std::size_t count = countOf(*row.group);
    if (row.count == count && row.told == row.group->properties())
        return false;
    row = rowFor(row.group);
    return true;
}

} // namespace veilkeep
