#pragma once

#include "filelist/FilesController.h"
#include "widgets/filetable/FilesTableModel.h"

#include <QItemSelection>
#include <QItemSelectionModel>

#include <cstddef>

namespace veilkeep {

// Keeps the table's selection and FilesController's the same, both ways, and the current row on its record.
// What the user changes is handed over as the change that it is. Owned by FilesTableView; main thread.
class FilesTableSelection : public QObject {
    Q_OBJECT

public:
    FilesTableSelection(FilesController& files, FilesTableModel& model, QItemSelectionModel& selection,
                        QObject* parent = nullptr);

private:
    void handOver(const QItemSelection& selected, const QItemSelection& deselected);
    void follow(); // after an update of the model
    void select();
    std::vector<ListedFile> filesIn(const QItemSelection& selection) const;
    std::size_t selectedRows() const;

    FilesController& m_files;
    FilesTableModel& m_model;
    QItemSelectionModel& m_selection;
    ListedFile m_current; // while the rows begin anew
    bool m_isFollowing = false;
    bool m_isHandingOver = false;
    bool m_isToBeFollowed = true;
};

} // namespace veilkeep
