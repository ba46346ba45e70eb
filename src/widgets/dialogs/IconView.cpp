#include "widgets/dialogs/IconView.h"

#include <QPainter>

namespace veilkeep {

IconView::IconView(const QIcon& icon, int extent, QWidget* parent) : QWidget(parent), m_icon(icon) {
    setFixedSize(extent, extent);
}

void IconView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    m_icon.paint(&painter, rect());
}

} // namespace veilkeep
