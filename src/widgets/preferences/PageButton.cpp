#include "widgets/preferences/PageButton.h"

#include "widgets/controls/RowControls.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int iconExtent = 32, gap = 4, margin = 7, leastWidth = 84;
constexpr double radius = 7;

} // namespace

PageButton::PageButton(const QString& title, const QIcon& icon, QWidget* parent) : QToolButton(parent) {
    setText(title);
    setIcon(icon);
    setIconSize({iconExtent, iconExtent});
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PageButton::sizeHint() const {
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text());
    return {std::max(leastWidth, label.width() + 2 * margin),
            iconSize().height() + gap + label.height() + 2 * margin};
}

void PageButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ground = palette().color(QPalette::Window), words = palette().color(QPalette::WindowText);
    if (isChecked() || isDown() || underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(blended(ground, words, isChecked() || isDown() ? 0.13 : 0.06));
        painter.drawRoundedRect(rect(), radius, radius);
    }
    const QRect image((width() - iconExtent) / 2, margin, iconExtent, iconExtent);
    icon().paint(&painter, image, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    QStyleOption option;
    option.initFrom(this);
    const int shown = style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) != 0
                          ? Qt::TextShowMnemonic
                          : Qt::TextHideMnemonic;
    const QRect label(0, image.bottom() + 1 + gap, width(), height() - image.bottom() - 1 - gap - margin);
    painter.setPen(words);
    constexpr int placement = static_cast<int>(Qt::AlignHCenter | Qt::AlignTop) | Qt::TextSingleLine;
    painter.drawText(label, placement | shown, text());
    if (!hasFocus())
        return;
    const double width = lineWidth(painter, 2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(withContrast(palette().color(QPalette::Highlight), ground, 3), width));
    painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius,
                            radius);
}

void PageButton::enterEvent(QEnterEvent* event) {
    QToolButton::enterEvent(event);
    update();
}

void PageButton::leaveEvent(QEvent* event) {
    QToolButton::leaveEvent(event);
    update();
}

} // namespace veilkeep
