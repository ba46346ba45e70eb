#include "widgets/preview/ElidedLabel.h"

namespace veilkeep {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setFullText(const QString& text) {
    m_fullText = text;
    setAccessibleName(text);
    fit();
    updateGeometry();
}

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(m_fullText) + 1, QLabel::sizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 6, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::fit() {
    const QString fitting = fontMetrics().elidedText(m_fullText, Qt::ElideMiddle, width());
    if (text() != fitting)
        setText(fitting);
}

} // namespace veilkeep
