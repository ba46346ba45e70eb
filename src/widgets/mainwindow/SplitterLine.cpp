#include "widgets/mainwindow/SplitterLine.h"

#include "widgets/controls/RowControls.h"
#include "widgets/mainwindow/LineSplitter.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

namespace veilkeep {
namespace {

constexpr int step = 10;

class AccessibleLine : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleLine(SplitterLine& line)
        : QAccessibleWidget(&line, QAccessible::Splitter), m_line(line) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true; // by F8
        return state;
    }
    QVariant currentValue() const override { return width().now; }
    QVariant minimumValue() const override { return width().least; }
    QVariant maximumValue() const override { return width().most; }
    QVariant minimumStepSize() const override { return step; }
    void setCurrentValue(const QVariant& value) override {
        m_line.lines().setPaneWidth(m_line.number(), value.toInt());
    }

private:
    LineSplitter::PaneWidth width() const { return m_line.lines().paneWidth(m_line.number()); }

    SplitterLine& m_line;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const line = qobject_cast<SplitterLine*>(object);
    return line ? new AccessibleLine(*line) : nullptr;
}

} // namespace

SplitterLine::SplitterLine(LineSplitter& splitter)
    : QSplitterHandle(splitter.orientation(), &splitter), m_lines(splitter) {
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled);
    connect(&splitter, &QSplitter::splitterMoved, this, [this](int, int moved) {
        if (moved != number())
            return;
        QAccessibleValueChangeEvent event(this, m_lines.paneWidth(moved).now);
        QAccessible::updateAccessibility(&event);
    });
}

int SplitterLine::number() const {
    return m_lines.indexOf(const_cast<SplitterLine*>(this));
}

void SplitterLine::keyPressEvent(QKeyEvent* event) {
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return QSplitterHandle::keyPressEvent(event);
    const int right = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return m_lines.moveLine(number(), -right * step);
    case Qt::Key_Right:
        return m_lines.moveLine(number(), right * step);
    case Qt::Key_Home:
        return m_lines.moveLine(number(), -m_lines.width());
    case Qt::Key_End:
        return m_lines.moveLine(number(), m_lines.width());
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return m_lines.leaveLines();
    default:
        return QSplitterHandle::keyPressEvent(event);
    }
}

// --- How it looks ---

// A thin line takes the mouse on both sides of it: as wide as that it is while it has the focus.
void SplitterLine::showFocus() {
    if (hasFocus())
        clearMask();
    else
        setMask(contentsRect());
    update();
}

void SplitterLine::paintEvent(QPaintEvent*) {
    const QColor ground = palette().color(QPalette::Window);
    const QColor focus = withContrast(palette().color(QPalette::Highlight), ground, 3);
    QPainter(this).fillRect(rect(), hasFocus() ? focus : separatorColor(palette()));
}

void SplitterLine::focusInEvent(QFocusEvent* event) {
    QSplitterHandle::focusInEvent(event);
    showFocus();
}

void SplitterLine::focusOutEvent(QFocusEvent* event) {
    QSplitterHandle::focusOutEvent(event);
    showFocus();
}

void SplitterLine::resizeEvent(QResizeEvent* event) {
    QSplitterHandle::resizeEvent(event);
    showFocus();
}

} // namespace veilkeep
