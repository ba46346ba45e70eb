#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

namespace veilkeep {

// A switch with three values: 0 off, 1 on, 2 mixed (of a selection that differs; the user cannot set it).
// Drawn with the palette; slides when it changes. Main thread.
class OnOffSwitch : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)

public:
    enum Value { Off = 0, On = 1, Mixed = 2 };

    explicit OnOffSwitch(QWidget* parent = nullptr);

    int value() const { return m_value; }
    void setValue(int value); // without switched()

    QSize sizeHint() const override;

signals:
    void valueChanged(int value);
    void switched(int value); // by the user, by mouse, key or screen reader: 0 or 1; from mixed to 1

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;
    void nextCheckState() override;
    void changeEvent(QEvent* event) override;

private:
    int m_value = Off;
    QVariantAnimation m_slide;
};

} // namespace veilkeep
