#pragma once

#include <QWidget>

#include <array>

class QAbstractButton;

namespace veilkeep {

// The buttons All, Hidden, Visible, Broken, joined; one of them is on. Arrow keys go from one to the next.
// Main thread.
class FilterBar : public QWidget {
    Q_OBJECT

public:
    enum Filter { All, Hidden, Visible, Broken };

    explicit FilterBar(QWidget* parent = nullptr);

    Filter filter() const;
    void setFilter(Filter filter); // without filterChosen()

signals:
    void filterChosen(veilkeep::FilterBar::Filter filter); // by the user

private:
    void moveBy(QAbstractButton* from, int steps);

    std::array<QAbstractButton*, 4> m_buttons{};
    bool m_isSet = false; // at the moment, by the program
};

} // namespace veilkeep
