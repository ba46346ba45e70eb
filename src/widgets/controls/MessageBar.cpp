#include "widgets/controls/MessageBar.h"

#include "widgets/controls/RowControls.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QToolButton>

namespace veilkeep {
namespace {

constexpr int iconSize = 18;

// What appears with this role is read out by screen readers.
QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const bar = qobject_cast<MessageBar*>(object);
    return bar ? new QAccessibleWidget(bar, QAccessible::AlertMessage) : nullptr;
}

QColor kindColor(MessageBar::Kind kind, const QPalette& palette) {
    return kind == MessageBar::Kind::Warning
               ? warningColor(palette)
               : withContrast(palette.color(QPalette::Highlight), palette.color(QPalette::Base), 4.5);
}

// A triangle with an exclamation mark, or a circle with an i.
QPainterPath shape(MessageBar::Kind kind) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    if (kind == MessageBar::Kind::Warning) {
        path.moveTo(9, 1.5);
        path.lineTo(17.5, 16.5);
        path.lineTo(0.5, 16.5);
        path.closeSubpath();
        path.addRect(8, 6.5, 2, 5);
        path.addEllipse(QPointF(9, 13.9), 1.2, 1.2);
        return path;
    }
    path.addEllipse(QPointF(9, 9), 8, 8);
    path.addEllipse(QPointF(9, 5), 1.3, 1.3);
    path.addRect(8, 7.6, 2, 6);
    return path;
}

} // namespace

MessageBar::MessageBar(Kind kind, QWidget* parent)
    : QFrame(parent),
      m_kind(kind),
      m_icon(new QLabel(this)),
      m_text(new QLabel(this)),
      m_action(new QPushButton(this)),
      m_dismiss(new QToolButton(this)) {
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_icon->setFixedSize(iconSize, iconSize);
    m_icon->setAccessibleName(kind == Kind::Warning ? tr("Warning") : tr("Information"));
    m_action->hide();
    m_dismiss->setAutoRaise(true);
    m_dismiss->setText(QStringLiteral("\u00d7"));
    m_dismiss->setAccessibleName(tr("Dismiss this message"));
    m_dismiss->setToolTip(tr("Dismiss"));
    m_dismiss->setFocusPolicy(Qt::StrongFocus);
    m_dismiss->hide();
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 8, 6);
    layout->setSpacing(8);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_action);
    layout->addWidget(m_dismiss);
    connect(m_action, &QPushButton::clicked, this, &MessageBar::actionTriggered);
    connect(m_dismiss, &QToolButton::clicked, this, [this] {
        hide();
        emit dismissed();
    });
}

QString MessageBar::text() const {
    return m_text->text();
}

void MessageBar::setText(const QString& text) {
    m_text->setText(text);
    setAccessibleName(m_icon->accessibleName() + QStringLiteral(": ") + text);
}

// "&" is no mnemonic here.
void MessageBar::setActionText(const QString& action) {
    m_action->setText(QString(action).replace(QLatin1Char('&'), QLatin1String("&&")));
    m_action->setVisible(!action.isEmpty());
}

void MessageBar::setDismissible(bool isDismissible) {
    m_dismiss->setVisible(isDismissible);
}

void MessageBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor color = kindColor(m_kind, palette());
    painter.fillRect(rect(), blended(palette().color(QPalette::Base), color, 0.1));
    fillSeparator(painter, rect(), Qt::BottomEdge, blended(palette().color(QPalette::Base), color, 0.4));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(m_icon->geometry().topLeft());
    painter.fillPath(shape(m_kind), color);
}

} // namespace veilkeep
