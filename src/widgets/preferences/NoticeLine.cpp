#include "widgets/preferences/NoticeLine.h"

#include "widgets/controls/DarkPalette.h"
#include "widgets/controls/RowControls.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QStyle>

namespace veilkeep {
namespace {

QColor noticeColor(NoticeLine::Kind kind, const QPalette& palette) {
    constexpr double readable = 4.5;
    const bool onDark = isDark(palette);
    const QColor ground = palette.color(QPalette::Window);
    const QColor wrong = onDark ? QColor(0xff, 0x78, 0x70) : QColor(0xc4, 0x1e, 0x1e);
    const QColor mind = onDark ? QColor(0xf0, 0x9a, 0x5c) : QColor(0xb4, 0x4c, 0x12);
    return withContrast(kind == NoticeLine::Kind::Wrong ? wrong : mind, ground, readable);
}

// What appears with this role is read out by screen readers.
QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const line = qobject_cast<NoticeLine*>(object);
    return line ? new QAccessibleWidget(line, QAccessible::AlertMessage, line->text()) : nullptr;
}

} // namespace

NoticeLine::NoticeLine(Kind kind, const QString& text, QWidget* parent) : QLabel(text, parent), m_kind(kind) {
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled);
    setTextFormat(Qt::PlainText);
    QSizePolicy kept = sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    setSizePolicy(kept);
    hide();
}

void NoticeLine::tell() {
    hide(); // one that is there is read out once more
    show();
}

void NoticeLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(noticeColor(m_kind, palette()));
    const int wrap = wordWrap() ? Qt::TextWordWrap : 0;
    painter.drawText(contentsRect(),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | wrap,
                     text());
}

} // namespace veilkeep
