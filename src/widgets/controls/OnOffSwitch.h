#pragma once

#include <QCheckBox>
#include <QVariantAnimation>

namespace veilkeep {

// A switch with three values: 0 off, 1 on, 2 mixed (of a selection that differs; the user cannot set it).
// Drawn with the palette; slides when it changes. A check box to screen readers. Main thread.
class OnOffSwitch : public QCheckBox {
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)

public:
    enum Value { Off = 0, On = 1, Mixed = 2 };

    explicit OnOffSwitch(QWidget* parent = nullptr);

    int value() const;
    void setValue(int value); // without switched()

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void valueChanged(int value);
    void switched(int value); // by the user, by mouse, key or screen reader: 0 or 1; from mixed to 1

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;
    void nextCheckState() override;

private:
    void slideTo(double position);

    double m_position = 0;
    QVariantAnimation m_slide;
};

} // namespace veilkeep
