#include "widgets/filetable/FilesTableSelection.h"

#include "widgets/controls/RowRuns.h"

#include <utility>

namespace veilkeep {

FilesTableSelection::FilesTableSelection(FilesController& files, FilesTableModel& model,
                                         QItemSelectionModel& selection, QObject* parent)
    : QObject(parent), m_files(files), m_model(model), m_selection(selection) {
    connect(&selection, &QItemSelectionModel::selectionChanged, this, &FilesTableSelection::handOver);
    connect(&files, &FilesController::selectionSet, this, [this] {
        if (!m_isHandingOver)
            m_isToBeFollowed = true;
    });
    connect(&model, &FilesTableModel::modelAboutToBeReset, this, [this] {
        const QModelIndex current = m_selection.currentIndex();
        m_current = current.isValid() ? m_model.fileAt(current.row()) : nullptr;
    });
    connect(&model, &FilesTableModel::updated, this, &FilesTableSelection::follow);
    follow();
}

std::vector<ListedFile> FilesTableSelection::filesIn(const QItemSelection& selection) const {
    std::vector<ListedFile> files;
    for (const QItemSelectionRange& range : selection)
        for (int row = range.top(); row <= range.bottom(); ++row)
            files.push_back(m_model.fileAt(row));
    return files;
}

// Rows that leave are no choice of the user's, and what was set meanwhile has still to be followed.
void FilesTableSelection::handOver(const QItemSelection& selected, const QItemSelection& deselected) {
    if (m_isFollowing || m_model.isUpdating())
        return;
    m_isHandingOver = true;
    if (m_selection.hasSelection())
        m_files.changeSelection(filesIn(selected), filesIn(deselected));
    else
        m_files.clearSelection();
    m_isHandingOver = false;
}

std::size_t FilesTableSelection::selectedRows() const {
    std::size_t count = 0;
    for (const QItemSelectionRange& range : m_selection.selection())
        count += static_cast<std::size_t>(range.height());
    return count;
}

// Rows that have left took their selection along, and so did their records.
void FilesTableSelection::follow() {
    if (std::exchange(m_isToBeFollowed, false) || selectedRows() != m_files.selectedCount())
        select();
    const ListedFile current = std::exchange(m_current, nullptr);
    if (!current || m_selection.currentIndex().isValid())
        return;
    if (const int row = m_model.rowOf(current); row >= 0)
        m_selection.setCurrentIndex(m_model.index(row, 0), QItemSelectionModel::NoUpdate);
}

// Not in one step, and not as rows: each run would be compared with all before it. There is one column.
void FilesTableSelection::select() {
    QItemSelection selection;
    forEachRun(
        m_files.selectedCount() > 0 ? m_model.rowCount() : 0,
        [this](int row) { return m_files.isSelected(m_model.fileAt(row)); },
        [&](int first, int last) {
            selection.append(QItemSelectionRange(m_model.index(first, 0), m_model.index(last, 0)));
        });
    m_isFollowing = true;
    m_selection.clearSelection();
    if (!selection.isEmpty())
        m_selection.select(selection, QItemSelectionModel::Select);
    const QModelIndex current = m_selection.currentIndex();
    if (!selection.isEmpty() && !m_current && !m_selection.isSelected(current))
        m_selection.setCurrentIndex(selection.first().topLeft(), QItemSelectionModel::NoUpdate);
    m_isFollowing = false;
}

} // namespace veilkeep
