#include "widgets/controls/OnOffSwitch.h"

#include "widgets/controls/RowControls.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QStyle>

namespace veilkeep {
namespace {

constexpr int slideMilliseconds = 120;

int valueOf(Qt::CheckState state) {
    return state == Qt::Checked     ? OnOffSwitch::On
           : state == Qt::Unchecked ? OnOffSwitch::Off
                                    : OnOffSwitch::Mixed;
}

double positionOf(int value) {
    return value == OnOffSwitch::Mixed ? 0.5 : value;
}

// A check box whose toggling by a screen reader is the user's own.
class AccessibleSwitch : public QAccessibleWidget {
public:
    explicit AccessibleSwitch(OnOffSwitch& control)
        : QAccessibleWidget(&control, QAccessible::CheckBox), m_switch(control) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_switch.value() == OnOffSwitch::On;
        state.checkStateMixed = m_switch.value() == OnOffSwitch::Mixed;
        return state;
    }
    QStringList actionNames() const override {
        return QStringList(toggleAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == toggleAction())
            m_switch.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    OnOffSwitch& m_switch;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const control = qobject_cast<OnOffSwitch*>(object);
    return control ? new AccessibleSwitch(*control) : nullptr;
}

void tellScreenReaders(OnOffSwitch& control) {
    QAccessible::State changed;
    changed.checked = true;
    changed.checkStateMixed = true;
    QAccessibleStateChangeEvent event(&control, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

OnOffSwitch::OnOffSwitch(QWidget* parent) : QCheckBox(parent) {
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_slide.setDuration(slideMilliseconds);
    m_slide.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant& position) {
        m_position = position.toDouble();
        update();
    });
    connect(this, &QCheckBox::stateChanged, this, [this] {
        slideTo(positionOf(value()));
        tellScreenReaders(*this);
        emit valueChanged(value());
    });
}

int OnOffSwitch::value() const {
    return valueOf(checkState());
}

void OnOffSwitch::setValue(int value) {
    setCheckState(value == On ? Qt::Checked : value == Off ? Qt::Unchecked : Qt::PartiallyChecked);
}

QSize OnOffSwitch::sizeHint() const {
    return switchSize + 2 * QSize(focusRingWidth, focusRingWidth);
}

void OnOffSwitch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QPalette colors = palette(); // drawn on the window's ground
    colors.setColor(QPalette::Base, colors.color(backgroundRole()));
    colors.setColor(QPalette::Text, colors.color(foregroundRole()));
    QRect track(QPoint(), switchSize);
    track.moveCenter(rect().center());
    paintSwitch(
        painter, track, m_position, colors,
        {.isEnabled = isEnabled(), .isHovered = underMouse(), .isPressed = isDown(), .hasFocus = hasFocus()});
}

bool OnOffSwitch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void OnOffSwitch::nextCheckState() {
    setValue(value() == On ? Off : On);
    emit switched(value());
}

void OnOffSwitch::slideTo(double position) {
    m_slide.stop();
    if (!isVisible() || style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) == 0) {
        m_position = position;
        update();
        return;
    }
    m_slide.setStartValue(m_position);
    m_slide.setEndValue(position);
    m_slide.start();
}

} // namespace veilkeep
