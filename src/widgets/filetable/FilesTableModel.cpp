#include "widgets/filetable/FilesTableModel.h"

#include "filelist/Texts.h"
#include "format/ValueFormatting.h"
#include "widgets/controls/RowRuns.h"

#include <algorithm>
#include <utility>

#include <QElapsedTimer>

namespace veilkeep {
namespace {

constexpr std::size_t maximumRuns = 100; // beyond it is quicker to begin anew
constexpr qint64 shortDuration = 4;      // milliseconds
constexpr qint64 longestDelay = 200;     // milliseconds

std::ptrdiff_t signedIndex(std::size_t index) {
    return static_cast<std::ptrdiff_t>(index);
}

} // namespace

FilesTableModel::FilesTableModel(FilesViewController& files, Previews& previews, QObject* parent)
    : QAbstractTableModel(parent), m_files(files), m_previews(previews) {
    m_updating.setSingleShot(true);
    connect(&m_updating, &QTimer::timeout, this, &FilesTableModel::update);
    connect(&files.filesController(), &FilesController::arrangedObjectsChanged, this, [this] {
        m_areRowsStale = true;
        schedule();
    });
    connect(&files.filesController(), &FilesController::selectionSet, this, &FilesTableModel::schedule);
    connect(&files.files(), &FileList::fileChanged, this, &FilesTableModel::noteChangeOf);
    connect(&previews, &Previews::changed, this, &FilesTableModel::noteChangeOf);
    connect(&files.brokenFiles(), &BrokenFiles::searchStateChanged, this, &FilesTableModel::noteChangeOfAll);
    update();
}

// In a batch that changes record after record, a long list takes a small part of the time.
void FilesTableModel::schedule() {
    if (!m_updating.isActive())
        m_updating.start(m_lastDuration < shortDuration
                             ? 0
                             : static_cast<int>(std::min(4 * m_lastDuration, longestDelay)));
}

void FilesTableModel::update() {
    m_updating.stop();
    QElapsedTimer clock;
    clock.start();
    m_isUpdating = true;
    if (std::exchange(m_areRowsStale, false))
        takeOverRows();
    m_isUpdating = false;
    tellChangedRows();
    emit updated();
    m_lastDuration = clock.elapsed();
}

void FilesTableModel::takeOverRows() {
    const std::vector<ListedFile>& now = m_files.filesController().arrangedObjects();
    if (const auto changes = rowChanges(m_rows, now, m_files.files().all(), maximumRuns))
        return apply(*changes, now);
    beginResetModel();
    m_rows = now;
    endResetModel();
}

void FilesTableModel::apply(const RowChanges& changes, const std::vector<ListedFile>& now) {
    for (auto run = changes.removed.rbegin(); run != changes.removed.rend(); ++run) {
        beginRemoveRows({}, static_cast<int>(run->first), static_cast<int>(run->first + run->count - 1));
        const auto first = m_rows.begin() + signedIndex(run->first);
        m_rows.erase(first, first + signedIndex(run->count));
        endRemoveRows();
    }
    for (const RowRun& run : changes.inserted) {
        beginInsertRows({}, static_cast<int>(run.first), static_cast<int>(run.first + run.count - 1));
        const auto first = now.begin() + signedIndex(run.first);
        m_rows.insert(m_rows.begin() + signedIndex(run.first), first, first + signedIndex(run.count));
        endInsertRows();
    }
}

void FilesTableModel::noteChangeOf(const ListedFile& file) {
    m_changed.insert(file);
    schedule();
}

void FilesTableModel::noteChangeOfAll() {
    m_areAllChanged = true;
    schedule();
}

void FilesTableModel::tellChangedRows() {
    const auto changed = std::exchange(m_changed, {});
    if (std::exchange(m_areAllChanged, false) && !m_rows.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
        return;
    }
    std::size_t left = changed.size();
    const auto isChanged = [&](int row) {
        const bool isIt = left > 0 && (changed.size() == 1 ? fileAt(row) == *changed.begin()
                                                           : changed.contains(fileAt(row)));
        left -= isIt;
        return isIt;
    };
    forEachRun(rowCount(), isChanged,
               [this](int first, int last) { emit dataChanged(index(first, 0), index(last, 0)); });
}

int FilesTableModel::rowOf(const ListedFile& file) const {
    const auto found = std::ranges::find(m_rows, file);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

QString FilesTableModel::name(const File& file) const {
    return shownPath(file.name());
}

QString FilesTableModel::place(const File& file) const {
    return placeWithTilde(file.originalPath());
}

QString FilesTableModel::sizeText(const File& file) const {
    return stringSizeFromLong(static_cast<std::int64_t>(file.size()));
}

QString FilesTableModel::trouble(const ListedFile& file) const {
    if (file->state() != File::Broken)
        return {};
    if (m_files.brokenFiles().isSearched(file))
        return tr("Searching…");
    return m_files.brokenFiles().isOnAbsentVolume(file) ? tr("Disk not connected") : tr("Not found");
}

QString FilesTableModel::accessibleText(const ListedFile& file) const {
    const QString state = file->state() == File::Hidden    ? tr("hidden")
                          : file->state() == File::Visible ? tr("visible")
                                                           : trouble(file);
    return tr("%1, %2, %3, %4", "name, place, size, state")
        .arg(name(*file), place(*file), sizeText(*file), state);
}

int FilesTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FilesTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1;
}

QVariant FilesTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ListedFile& file = fileAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return name(*file);
    case Qt::AccessibleTextRole:
        return accessibleText(file);
    default:
        return {};
    }
}

Qt::ItemFlags FilesTableModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags all = QAbstractTableModel::flags(index) | Qt::ItemIsDropEnabled;
    return index.isValid() ? all | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren : all;
}

// What is typed is looked for in all rows: the general way would ask for each as a variant.
QModelIndexList FilesTableModel::match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                       Qt::MatchFlags flags) const {
    if (role != Qt::DisplayRole || hits != 1 || flags != (Qt::MatchStartsWith | Qt::MatchWrap))
        return QAbstractTableModel::match(start, role, value, hits, flags);
    const QString typed = value.toString();
    for (int step = 0; step < rowCount(); ++step) {
        const int row = (start.row() + step) % rowCount();
        if (name(*fileAt(row)).startsWith(typed, Qt::CaseInsensitive))
            return {index(row, 0)};
    }
    return {};
}

} // namespace veilkeep
