#include "widgets/mainwindow/LineSplitter.h"

#include "widgets/mainwindow/SplitterLine.h"

#include <QApplication>
#include <QShortcut>

namespace veilkeep {

LineSplitter::LineSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
    connect(new QShortcut(QKeySequence(Qt::Key_F8), this), &QShortcut::activated, this,
            &LineSplitter::focusNextLine);
}

void LineSplitter::orderPanes() {
    for (int pane = 0; pane < count(); ++pane)
        widget(pane)->raise();
    for (int pane = 0; pane < count(); ++pane)
        handle(pane)->raise();
}

QSplitterHandle* LineSplitter::createHandle() {
    return new SplitterLine(*this);
}

// --- The widths of the panes ---

int LineSplitter::placeOf(int line) const {
    const QList<int> widths = sizes();
    int place = 0;
    for (int pane = 0; pane < line; ++pane)
        place += widths[pane] + (pane > 0 && !handle(pane)->isHidden() ? handleWidth() : 0);
    return place;
}

LineSplitter::PaneWidth LineSplitter::paneWidth(int line) const {
    const int now = sizes()[isBeforeLine(line) ? line - 1 : line];
    const int place = placeOf(line);
    int first = 0, last = 0;
    getRange(line, &first, &last);
    return isBeforeLine(line) ? PaneWidth{now - (place - first), now, now + (last - place)}
                              : PaneWidth{now - (last - place), now, now + (place - first)};
}

void LineSplitter::setPaneWidth(int line, int width) {
    const int more = width - paneWidth(line).now;
    moveLine(line, isBeforeLine(line) ? more : -more);
}

void LineSplitter::moveLine(int line, int by) {
    moveSplitter(placeOf(line) + by, line);
}

// --- The keyboard ---

void LineSplitter::focusNextLine() {
    const auto* const focused = qobject_cast<SplitterLine*>(QApplication::focusWidget());
    if (!focused)
        m_focusedBefore = QApplication::focusWidget();
    for (int line = focused ? focused->number() + 1 : 1; line < count(); ++line)
        if (handle(line)->isVisible())
            return handle(line)->setFocus(Qt::ShortcutFocusReason);
    leaveLines();
}

// As after a menu: the list of groups, or the search field, takes it for no more than it is.
void LineSplitter::leaveLines() {
    QWidget* const before = m_focusedBefore ? m_focusedBefore.data() : widget(0);
    before->setFocus(Qt::PopupFocusReason);
}

} // namespace veilkeep
