#include "widgets/controls/CheckBox.h"

#include "widgets/controls/DarkPalette.h"
#include "widgets/controls/RowControls.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace veilkeep {

void CheckBox::paintEvent(QPaintEvent* event) {
    QCheckBox::paintEvent(event);
    if (!isDark(palette()))
        return;
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    const QRectF box =
        onPixels(painter, style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this));
    const double width = lineWidth(painter, 1), middle = width / 2;
    const QColor ground = palette().color(QPalette::Window);
    painter.setPen(QPen(withContrast(ground, ground, 3), width));
    painter.drawRect(box.adjusted(middle, middle, -middle, -middle));
}

} // namespace veilkeep
