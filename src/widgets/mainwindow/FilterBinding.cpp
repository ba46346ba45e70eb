#include "widgets/mainwindow/FilterBinding.h"

namespace veilkeep {

FilterBinding::FilterBinding(FilterController& filter, FilterBar& bar, QLineEdit& searchField)
    : m_filter(filter), m_bar(bar), m_searchField(searchField) {
    connect(&m_bar, &FilterBar::filterChosen, this, &FilterBinding::choose);
    connect(&m_searchField, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text != m_filter.searchText())
            m_filter.setSearchText(text);
    });
    connect(&m_filter, &FilterController::showModeChanged, this, &FilterBinding::showMode);
    connect(&m_filter, &FilterController::searchTextChanged, this, &FilterBinding::showSearchText);
    showMode();
    showSearchText();
}

void FilterBinding::choose(FilterBar::Filter filter) {
    switch (filter) {
    case FilterBar::All:
        m_filter.setShowAll(true);
        break;
    case FilterBar::Hidden:
        m_filter.setShowOnlyHidden(true);
        break;
    case FilterBar::Visible:
        m_filter.setShowOnlyVisible(true);
        break;
    case FilterBar::Broken:
        m_filter.setShowOnlyInconsistent(true);
        break;
    }
}

void FilterBinding::showMode() {
    if (m_filter.showOnlyHidden())
        m_bar.setFilter(FilterBar::Hidden);
    else if (m_filter.showOnlyVisible())
        m_bar.setFilter(FilterBar::Visible);
    else
        m_bar.setFilter(m_filter.showOnlyInconsistent() ? FilterBar::Broken : FilterBar::All);
}

// While the user types, the field is ahead of nothing: its place in the text must stay.
void FilterBinding::showSearchText() {
    if (m_searchField.text() != m_filter.searchText())
        m_searchField.setText(m_filter.searchText());
}

} // namespace veilkeep
