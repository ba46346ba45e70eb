#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

#include <chrono>
#include <functional>

namespace veilkeep::test {

// Mouse and keyboard of the display itself, as a person moves them: the events come from the X server, to
// whichever window is there. Each call runs the event loop until what it sent has arrived.
namespace realInput {

void moveTo(const QPoint& onScreen);
void press(Qt::MouseButton button = Qt::LeftButton);
void release(Qt::MouseButton button = Qt::LeftButton);

// In the widget's middle, or at the place in it.
void click(const QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
void click(const QWidget& widget, const QPoint& place, Qt::MouseButton button = Qt::LeftButton);
void doubleClick(const QWidget& widget, const QPoint& place);
void drag(const QPoint& fromOnScreen, const QPoint& toOnScreen);

// "Ctrl+Right", "Space", "a": one key with its modifiers, as QKeySequence writes it.
void key(const QString& sequence);
void type(const QString& text); // letters, digits and blanks

// While it lives no input is taken by the event loop that the calls run, as while the program works: it waits
// for whoever takes it.
class WhileBusy {
public:
    WhileBusy();
    ~WhileBusy();
    WhileBusy(const WhileBusy&) = delete;
    WhileBusy& operator=(const WhileBusy&) = delete;
};

} // namespace realInput

// Runs the event loop until the condition holds; false where it did not within the limit.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(10));

// Whatever has been sent by now is handled.
void settle();

// Shows the window, waits until it is on the screen and has the keyboard; false where that did not happen.
bool showAndActivate(QWidget& window);

} // namespace veilkeep::test
