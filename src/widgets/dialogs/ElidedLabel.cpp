#include "widgets/dialogs/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace veilkeep {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter), palette(),
                          isEnabled(), shown, foregroundRole());
}

} // namespace veilkeep
