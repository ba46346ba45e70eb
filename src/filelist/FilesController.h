#pragma once

#include "filelist/FileList.h"
#include "filelist/FileMatcher.h"
#include "filelist/FilePredicate.h"
#include "filelist/ListedNames.h"

#include <QObject>

#include <cstddef>
#include <functional>
#include <unordered_set>
#include <vector>

namespace veilkeep {

// The records that the files table shows, those of the list that pass the filter, and the selected ones among
// them. Main thread.
class FilesController : public QObject {
    Q_OBJECT
public:
    explicit FilesController(FileList& files); // not owned

    void setFilterPredicate(const FilePredicate& predicate);

    // In list order, found when they are asked for. The reference lasts until the list or the filter changes.
    const std::vector<ListedFile>& arrangedObjects() const;

    // A selected record stays so for as long as it is shown.
    std::vector<ListedFile> selectedObjects() const;               // in the order of their rows
    void setSelectedObjects(const std::vector<ListedFile>& files); // those that are not shown are passed over
    void changeSelection(const std::vector<ListedFile>& added, const std::vector<ListedFile>& removed);
    void clearSelection() { setSelectedObjects({}); }
    bool isSelected(const ListedFile& file) const { return m_selection.contains(file); }
    std::size_t selectedCount() const { return m_selection.size(); }
    ListedFile firstSelected() const; // null where none is
    bool isAnySelected(const std::function<bool(const File&)>& isWanted) const;

signals:
    void arrangedObjectsChanged(); // perhaps not again before somebody asks for them
    void selectionChanged();       // once for a batch of changes
    void selectionSet();           // before selectionChanged(): not by records that are shown no more

private:
    using Selection = std::unordered_set<ListedFile>;

    bool isShown(const ListedFile& file) const;
    void arrangeAnew();
    void updateAfterChangeOf(const ListedFile& file);
    void updateRowOf(const ListedFile& file, bool isSeen);
    void tellSelection();
    std::vector<ListedFile> fewSelectedObjects() const;

    FileList& m_files;
    FilePredicate m_predicate;
    FileMatcher m_matcher{m_predicate};
    Selection m_selection; // shown ones only
    mutable std::vector<ListedFile> m_arranged;
    mutable ListedNames m_names; // of the list's first records, as they are
    mutable bool m_isArranged = false;
    mutable bool m_isAskedFor = false; // since a row changed
    bool m_isSelectionUntold = false;
};

} // namespace veilkeep
