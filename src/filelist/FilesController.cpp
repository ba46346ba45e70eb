#include "filelist/FilesController.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <ranges>
#include <utility>

namespace veilkeep {
namespace {

// Up to that part of the list it is quicker to look up where records lie.
constexpr std::size_t fewInList = 16;

} // namespace

FilesController::FilesController(FileList& files) : m_files(files) {
    for (const auto signal : {&FileList::wasAssigned, &FileList::filesRemoved, &FileList::filesSorted})
        connect(&files, signal, this, [this] {
            m_names.clear();
            arrangeAnew();
        });
    connect(&files, &FileList::filesAppended, this, &FilesController::arrangeAnew);
    connect(&files, &FileList::fileChanged, this, &FilesController::updateAfterChangeOf);
    connect(&files, &FileList::batchEnded, this, &FilesController::tellSelection);
}

void FilesController::setFilterPredicate(const FilePredicate& predicate) {
    if (predicate == m_predicate)
        return;
    m_predicate = predicate;
    m_matcher = FileMatcher(predicate);
    arrangeAnew();
}

const std::vector<ListedFile>& FilesController::arrangedObjects() const {
    if (!m_isArranged) {
        m_arranged = m_matcher.matchesAmong(m_files.all(), m_names);
        m_isArranged = true;
    }
    m_isAskedFor = true;
    return m_arranged;
}

std::vector<ListedFile> FilesController::selectedObjects() const {
    if (m_selection.size() <= m_files.size() / fewInList)
        return fewSelectedObjects();
    std::vector<ListedFile> selected;
    selected.reserve(m_selection.size());
    std::ranges::copy_if(arrangedObjects(), std::back_inserter(selected),
                         [&](const ListedFile& file) { return m_selection.contains(file); });
    return selected;
}

// Without going through the list.
std::vector<ListedFile> FilesController::fewSelectedObjects() const {
    std::vector<std::pair<std::optional<std::size_t>, ListedFile>> placed;
    placed.reserve(m_selection.size());
    for (const ListedFile& file : m_selection)
        placed.emplace_back(m_files.positionOf(file), file);
    std::ranges::sort(placed, {}, [](const auto& entry) { return entry.first; });
    std::vector<ListedFile> selected;
    selected.reserve(placed.size());
    std::ranges::copy(placed | std::views::values, std::back_inserter(selected));
    return selected;
}

ListedFile FilesController::firstSelected() const {
    if (m_selection.size() <= m_files.size() / fewInList) {
        const std::vector<ListedFile> selected = fewSelectedObjects();
        return selected.empty() ? nullptr : selected.front();
    }
    const auto found = std::ranges::find_if(
        arrangedObjects(), [&](const ListedFile& file) { return m_selection.contains(file); });
    return found == arrangedObjects().end() ? nullptr : *found;
}

bool FilesController::isAnySelected(const std::function<bool(const File&)>& isWanted) const {
    return std::ranges::any_of(m_selection, [&](const ListedFile& file) { return isWanted(*file); });
}

void FilesController::setSelectedObjects(const std::vector<ListedFile>& files) {
    Selection selection;
    selection.reserve(files.size());
    std::ranges::copy_if(files, std::inserter(selection, selection.end()),
                         [&](const ListedFile& file) { return isShown(file); });
    if (selection == m_selection)
        return;
    m_selection = std::move(selection);
    emit selectionSet();
    emit selectionChanged();
}

void FilesController::changeSelection(const std::vector<ListedFile>& added,
                                      const std::vector<ListedFile>& removed) {
    std::size_t changes = 0;
    for (const ListedFile& file : removed)
        changes += m_selection.erase(file);
    m_selection.reserve(m_selection.size() + added.size());
    for (const ListedFile& file : added)
        if (isShown(file) && m_selection.insert(file).second)
            ++changes;
    if (changes == 0)
        return;
    emit selectionSet();
    emit selectionChanged();
}

bool FilesController::isShown(const ListedFile& file) const {
    return m_files.contains(file) && m_matcher.matches(*file);
}

void FilesController::arrangeAnew() {
    if (std::exchange(m_isArranged, false))
        emit arrangedObjectsChanged();
    if (std::erase_if(m_selection, [&](const ListedFile& file) { return !isShown(file); }) > 0)
        emit selectionChanged();
}

void FilesController::updateAfterChangeOf(const ListedFile& file) {
    const auto position = m_files.positionOf(file);
    if (!position || !m_names.isUpToDate(*position, file->name()))
        m_names.clear();
    const bool isSeen = m_matcher.matches(*file);
    if (m_isArranged)
        updateRowOf(file, isSeen);
    if (!isSeen && m_selection.erase(file) > 0)
        m_isSelectionUntold = true;
    if (!m_files.isInBatch())
        tellSelection();
}

void FilesController::tellSelection() {
    if (std::exchange(m_isSelectionUntold, false))
        emit selectionChanged();
}

// One change moves the rows below it, which is quicker than to go through the list. Of many that nobody looks
// between, all but the first wait for the next who asks, who has the list gone through once.
void FilesController::updateRowOf(const ListedFile& file, bool isSeen) {
    const auto row =
        std::ranges::lower_bound(m_arranged, m_files.positionOf(file), {},
                                 [&](const ListedFile& shown) { return m_files.positionOf(shown); });
    const bool wasSeen = row != m_arranged.end() && *row == file;
    if (wasSeen == isSeen)
        return;
    if (!std::exchange(m_isAskedFor, false))
        m_isArranged = false;
    else if (isSeen)
        m_arranged.insert(row, file);
    else
        m_arranged.erase(row);
    emit arrangedObjectsChanged();
}

} // namespace veilkeep
