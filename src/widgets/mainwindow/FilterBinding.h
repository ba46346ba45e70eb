#pragma once

#include "filelist/FilterController.h"
#include "widgets/controls/FilterBar.h"

#include <QLineEdit>
#include <QObject>

namespace veilkeep {

// Keeps filter buttons, search field and filter the same, whichever of them changes. None is owned; main
// thread.
class FilterBinding : public QObject {
    Q_OBJECT

public:
    FilterBinding(FilterController& filter, FilterBar& bar, QLineEdit& searchField);

private:
    void choose(FilterBar::Filter filter);
    void showMode();
    void showSearchText();

    FilterController& m_filter;
    FilterBar& m_bar;
    QLineEdit& m_searchField;
};

} // namespace veilkeep
