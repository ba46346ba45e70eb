#pragma once

#include "filelist/FileList.h"
#include "filelist/FilePredicate.h"

#include <QObject>

#include <vector>

namespace veilkeep {

// The records that the files table shows, those of the list that pass the filter, and the selected ones among
// them. Main thread.
class FilesController : public QObject {
    Q_OBJECT
public:
    explicit FilesController(FileList& files); // not owned

    void setFilterPredicate(const FilePredicate& predicate);

    const std::vector<ListedFile>& arrangedObjects() const; // in list order

    std::vector<ListedFile> selectedObjects() const; // in the order of their rows
    void setSelectedObjects(const std::vector<ListedFile>& files);
    void clearSelection() { setSelectedObjects({}); }

signals:
    void arrangedObjectsChanged();
    void selectionChanged();
};

} // namespace veilkeep
