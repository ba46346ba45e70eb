#include "widgets/mainwindow/Strip.h"

#include "widgets/controls/RowControls.h"

#include <QPainter>

namespace veilkeep {

Strip::Strip(Line line, QWidget* parent) : QWidget(parent), m_line(line) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void Strip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(0, m_line == Line::Top ? 0 : height() - 1, width(), 1, separatorColor(palette()));
}

} // namespace veilkeep
