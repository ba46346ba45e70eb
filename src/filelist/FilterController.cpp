#include "filelist/FilterController.h"

#include "core/records/File.h"
#include "filelist/CurrentGroup.h"

#include <utility>

namespace veilkeep {

bool FilterController::showAll() const {
    return m_mode == ShowMode::All;
}

bool FilterController::showOnlyVisible() const {
    return m_mode == ShowMode::Visible;
}

bool FilterController::showOnlyHidden() const {
    return m_mode == ShowMode::Hidden;
}

bool FilterController::showOnlyInconsistent() const {
    return m_mode == ShowMode::Inconsistent;
}

void FilterController::setShowAll(bool) {
    setMode(ShowMode::All);
}

void FilterController::setShowOnlyVisible(bool) {
    setMode(ShowMode::Visible);
}

void FilterController::setShowOnlyHidden(bool) {
    setMode(ShowMode::Hidden);
}

void FilterController::setShowOnlyInconsistent(bool) {
    setMode(ShowMode::Inconsistent);
}

// Told even where the mode stays: a button that was switched off by hand has to come on again.
void FilterController::setMode(ShowMode mode) {
    m_mode = mode;
    emit showModeChanged();
    applyFilter();
}

// The search goes first, so that nothing is ever filtered by the new group and the old search.
void FilterController::setGroup(std::optional<std::int64_t> groupID) {
    m_groupID = groupID;
    m_searchText.clear();
    emit searchTextChanged();
    setShowAll(true);
}

void FilterController::setSearchText(const QString& text) {
    m_searchText = text;
    emit searchTextChanged();
    applyFilter();
}

void FilterController::applyFilter() {
    FilePredicate predicate;
    switch (m_mode) {
    case ShowMode::All:
        break;
    case ShowMode::Visible:
        predicate.state = File::Visible;
        break;
    case ShowMode::Hidden:
        predicate.state = File::Hidden;
        break;
    case ShowMode::Inconsistent:
        predicate.state = File::Broken;
        break;
    }
    if (m_groupID != CurrentGroup::allFiles)
        predicate.groupID = m_groupID;
    predicate.nameSearch = m_searchText;
    predicate.nameSearch.replace('\'', ' ');
    setFilterPredicate(std::move(predicate));
}

void FilterController::setFilterPredicate(FilePredicate predicate) {
    if (predicate == m_filterPredicate)
        return;
    m_filterPredicate = std::move(predicate);
    emit filterPredicateChanged();
}

} // namespace veilkeep
