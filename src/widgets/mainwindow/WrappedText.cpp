#include "widgets/mainwindow/WrappedText.h"

#include <QAbstractTextDocumentLayout>
#include <QFocusEvent>
#include <QTextDocument>
#include <QWheelEvent>

#include <cmath>

namespace veilkeep {

WrappedText::WrappedText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setAcceptRichText(false);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setMinimumWidth(1);
    setFixedHeight(fontMetrics().lineSpacing());
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            [this](const QSizeF& size) { setFixedHeight(static_cast<int>(std::ceil(size.height()))); });
}

void WrappedText::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

// Shows where the focus is, and makes copying one key.
void WrappedText::focusInEvent(QFocusEvent* event) {
    QTextEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        selectAll();
}

void WrappedText::focusOutEvent(QFocusEvent* event) {
    QTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
    }
}

} // namespace veilkeep
