#include "widgets/dialogs/TextBlock.h"

#include <QEvent>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace veilkeep {
namespace {

constexpr int usualWidth = 400;

} // namespace

TextBlock::TextBlock(const QString& text, int mostLines, QWidget* parent)
    : QTextEdit(parent), m_mostLines(mostLines) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setPlainText(text);
    scrollOnlyWhereNeeded();
}

QSize TextBlock::sizeHint() const {
    return minimumSizeHint();
}

QSize TextBlock::minimumSizeHint() const {
    return {usualWidth, heightForWidth(usualWidth)};
}

int TextBlock::heightForWidth(int width) const {
    return std::min(textHeight(width), m_mostLines * fontMetrics().lineSpacing());
}

int TextBlock::textHeight(int width) const {
    if (width == m_measuredWidth)
        return m_measuredHeight;
    QTextDocument measure;
    measure.setDocumentMargin(0);
    measure.setDefaultFont(font());
    measure.setDefaultTextOption(document()->defaultTextOption());
    measure.setPlainText(toPlainText());
    measure.setTextWidth(width);
    m_measuredWidth = width;
    m_measuredHeight = static_cast<int>(std::ceil(measure.size().height()));
    return m_measuredHeight;
}

// One that scrolls can be reached with the keyboard; the others do not stand in its way.
void TextBlock::scrollOnlyWhereNeeded() {
    const bool scrolls =
        textHeight(std::max(width(), usualWidth)) > m_mostLines * fontMetrics().lineSpacing();
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
}

void TextBlock::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    m_measuredWidth = -1;
    scrollOnlyWhereNeeded();
    updateGeometry();
}

void TextBlock::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    scrollOnlyWhereNeeded();
}

} // namespace veilkeep
