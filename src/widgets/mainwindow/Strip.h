#pragma once

#include <QWidget>

namespace veilkeep {

// A bar across the window, of the table's colour, with a line at one of its edges. Main thread.
class Strip : public QWidget {
    Q_OBJECT

public:
    enum class Line { Top, Bottom };

    explicit Strip(Line line, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Line m_line;
};

} // namespace veilkeep
