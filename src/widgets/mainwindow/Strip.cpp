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
    fillSeparator(painter, rect(), m_line == Line::Top ? Qt::TopEdge : Qt::BottomEdge,
                  separatorColor(palette()));
}

} // namespace veilkeep
