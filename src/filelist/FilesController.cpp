#include "filelist/FilesController.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace veilkeep {

FilesController::FilesController(FileList& files) : m_files(files) {
    for (const auto signal : {&FileList::wasAssigned, &FileList::filesRemoved, &FileList::filesSorted})
        connect(&files, signal, this, [this] {
            m_names.clear();
            arrangeAnew();
        });
    connect(&files, &FileList::filesAppended, this, &FilesController::arrangeAnew);
    connect(&files, &FileList::fileChanged, this, &FilesController::updateAfterChangeOf);
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
    return m_arranged;
}

std::vector<ListedFile> FilesController::selectedObjects() const {
    std::vector<ListedFile> selected;
    if (m_selection.empty())
        return selected;
    std::ranges::copy_if(arrangedObjects(), std::back_inserter(selected),
                         [&](const ListedFile& file) { return m_selection.contains(file); });
    return selected;
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

// A batch changes many records, and most changes change no row's being there: the list is gone through again
// only for a record that comes into view.
void FilesController::updateAfterChangeOf(const ListedFile& file) {
    m_names.clear();
    const bool isSeen = m_matcher.matches(*file);
    if (m_isArranged) {
        const auto row = std::ranges::find(m_arranged, file);
        const bool wasSeen = row != m_arranged.end();
        if (wasSeen && !isSeen)
            m_arranged.erase(row);
        if (!wasSeen && isSeen)
            m_isArranged = false;
        if (wasSeen != isSeen)
            emit arrangedObjectsChanged();
    }
    if (!isSeen && m_selection.erase(file) > 0)
        emit selectionChanged();
}

} // namespace veilkeep
