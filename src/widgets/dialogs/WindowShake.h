#pragma once

#include <QPoint>
#include <QVariantAnimation>

class QWidget;

namespace veilkeep {

// Moves a window along Shake's path and back to where it was. Where windows cannot be moved its content moves
// within it, and nothing does where animations are switched off. Owned by the window.
class WindowShake : public QVariantAnimation {
    Q_OBJECT

public:
    WindowShake(QWidget& window, QWidget& content);

    void shake(); // one that still runs ends first, at its beginning's place

protected:
    void updateCurrentValue(const QVariant& value) override;
    void updateState(State newState, State oldState) override;

private:
    QWidget& moved() const;

    QWidget& m_window;
    QWidget& m_content;
    QPoint m_home;
};

} // namespace veilkeep
