#include "widgets/controls/FilterBar.h"

#include "widgets/controls/RowControls.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

constexpr double cornerRadius = 5;

// One of several joined buttons. To screen readers and in its behaviour it is a radio button.
class Segment : public QRadioButton {
public:
    using Move = std::function<void(int)>;

    Segment(const QString& text, bool isFirst, bool isLast, Move move, QWidget* parent)
        : QRadioButton(text, parent), m_isFirst(isFirst), m_isLast(isLast), m_move(std::move(move)) {
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        const int width = metrics.horizontalAdvance(text()) + 2 * metrics.averageCharWidth();
        return QSize(width + 10, metrics.height() + 11);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<int> stepsOf(int key) const;
    QPainterPath outline(const QRectF& rect) const;

    const bool m_isFirst;
    const bool m_isLast;
    const Move m_move;
};

std::optional<int> Segment::stepsOf(int key) const {
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    constexpr int farthest = 100;
    switch (key) {
    case Qt::Key_Right:
        return forward;
    case Qt::Key_Left:
        return -forward;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Home:
        return -farthest;
    case Qt::Key_End:
        return farthest;
    default:
        return std::nullopt;
    }
}

void Segment::keyPressEvent(QKeyEvent* event) {
    if (const auto steps = stepsOf(event->key()); steps && event->modifiers() == Qt::NoModifier)
        m_move(*steps);
    else
        QRadioButton::keyPressEvent(event);
}

// Rounded where it ends the bar.
QPainterPath Segment::outline(const QRectF& rect) const {
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    const bool roundLeft = isRightToLeft ? m_isLast : m_isFirst;
    const bool roundRight = isRightToLeft ? m_isFirst : m_isLast;
    QPainterPath path;
    path.addRoundedRect(rect, cornerRadius, cornerRadius);
    const double half = rect.width() / 2;
    QPainterPath square;
    if (!roundLeft)
        square.addRect(rect.adjusted(0, 0, -half, 0));
    if (!roundRight)
        square.addRect(rect.adjusted(half, 0, 0, 0));
    return path.united(square).simplified();
}

void Segment::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette colors = palette();
    const QColor base = colors.color(QPalette::Base), text = colors.color(QPalette::Text);
    // Neighbours share a line: all but the last leave their right edge to the next one.
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (!m_isLast)
        frame.adjust(isRightToLeft ? -1 : 0, 0, isRightToLeft ? 0 : 1, 0);
    QColor ground = isChecked() ? colors.color(QPalette::Highlight) : base;
    if (isDown() || underMouse())
        ground = blended(ground, text, isDown() ? 0.15 : 0.06);
    painter.setPen(isChecked() ? ground : blended(base, text, 0.25));
    painter.setBrush(ground);
    painter.drawPath(outline(frame));
    const QColor wanted = isChecked() ? colors.color(QPalette::HighlightedText) : text;
    painter.setPen(withContrast(wanted, ground, 4.5));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, this->text());
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(withContrast(wanted, ground, 4.5), 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5), 3, 3);
    }
}

} // namespace

FilterBar::FilterBar(QWidget* parent) : QWidget(parent) {
    setAccessibleName(tr("Show"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const std::array texts{tr("All"), tr("Hidden"), tr("Visible"), tr("Broken")};
    const std::array names{tr("All items"), tr("Hidden items"), tr("Visible items"), tr("Broken items")};
    for (std::size_t number = 0; number < m_buttons.size(); ++number) {
        auto* const button = new Segment(
            texts[number], number == 0, number + 1 == m_buttons.size(),
            [this, number](int steps) { moveBy(m_buttons[number], steps); }, this);
        m_buttons[number] = button;
        button->setAccessibleName(names[number]);
        // Toggled, not clicked: screen readers do no click. Tab stops at the one that is on.
        connect(button, &QAbstractButton::toggled, this, [this, button, number](bool isOn) {
            button->setFocusPolicy(isOn ? Qt::StrongFocus : Qt::ClickFocus);
            if (isOn && !m_isSet)
                emit filterChosen(static_cast<Filter>(number));
        });
        button->setFocusPolicy(Qt::ClickFocus);
        layout->addWidget(button);
    }
    setFilter(All);
}

FilterBar::Filter FilterBar::filter() const {
    const auto on = std::ranges::find_if(m_buttons, &QAbstractButton::isChecked);
    return static_cast<Filter>(on - m_buttons.begin());
}

void FilterBar::setFilter(Filter filter) {
    m_isSet = true;
    m_buttons[filter]->setChecked(true);
    m_isSet = false;
}

void FilterBar::moveBy(QAbstractButton* from, int steps) {
    const auto at = std::ranges::find(m_buttons, from) - m_buttons.begin();
    const auto last = std::ssize(m_buttons) - 1;
    const auto next = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at + steps, 0, last));
    if (m_buttons[next] == from)
        return;
    m_buttons[next]->setFocus(Qt::TabFocusReason);
    m_buttons[next]->click();
}

} // namespace veilkeep
