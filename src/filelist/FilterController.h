#pragma once

#include "filelist/FilePredicate.h"

#include <QObject>

#include <cstdint>
#include <optional>

namespace veilkeep {

// Decides which records the files table shows: those of the selected group, in one of four show modes, whose
// name matches the search text. Main thread.
class FilterController : public QObject {
    Q_OBJECT
public:
    // One of the four is true at any time.
    bool showAll() const;
    bool showOnlyVisible() const;
    bool showOnlyHidden() const;
    bool showOnlyInconsistent() const;

    // Each switches its own mode on, whatever the argument says.
    void setShowAll(bool);
    void setShowOnlyVisible(bool);
    void setShowOnlyHidden(bool);
    void setShowOnlyInconsistent(bool);

    void setGroup(std::optional<std::int64_t> groupID); // back to all modes and no search
    void setSearchText(const QString& text);            // what the search field holds
    const QString& searchText() const { return m_searchText; }

    void applyFilter();
    const FilePredicate& filterPredicate() const { return m_filterPredicate; }
    void setFilterPredicate(FilePredicate predicate);

signals:
    void showModeChanged(); // after each switch, also to the mode that was on
    void searchTextChanged();
    void filterPredicateChanged();

private:
    enum class ShowMode { All, Visible, Hidden, Inconsistent };
    void setMode(ShowMode mode);

    ShowMode m_mode = ShowMode::All;
    std::optional<std::int64_t> m_groupID;
    QString m_searchText;
    FilePredicate m_filterPredicate;
};

} // namespace veilkeep
