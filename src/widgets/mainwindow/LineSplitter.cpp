#include "widgets/mainwindow/LineSplitter.h"

#include "widgets/controls/RowControls.h"

#include <QPainter>
#include <QSplitterHandle>

namespace veilkeep {
namespace {

class Handle : public QSplitterHandle {
public:
    using QSplitterHandle::QSplitterHandle;

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), separatorColor(palette())); }
};

} // namespace

LineSplitter::LineSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
}

void LineSplitter::orderPanes() {
    for (int pane = 0; pane < count(); ++pane)
        widget(pane)->raise();
    for (int pane = 0; pane < count(); ++pane)
        handle(pane)->raise();
}

QSplitterHandle* LineSplitter::createHandle() {
    return new Handle(orientation(), this);
}

} // namespace veilkeep
