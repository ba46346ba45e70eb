#include "tests/support/gui/RealInput.h"

#include "tests/support/WaitUntil.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeySequence>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <xcb/xcb.h>

namespace veilkeep::test {
namespace {

Display* display() {
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        throw std::logic_error("real input needs an X display");
    return x11->display();
}

// Comes back through the display behind all that was sent before it.
class Marker : public QAbstractNativeEventFilter {
public:
    Marker()
        : m_window(::XCreateSimpleWindow(display(), DefaultRootWindow(display()), 0, 0, 1, 1, 0, 0, 0)),
          m_type(::XInternAtom(display(), "VEILKEEP_TEST_MARKER", 0)) {
        qApp->installNativeEventFilter(this);
    }
    ~Marker() override { ::XDestroyWindow(display(), m_window); }

    bool passes(bool takesInput) {
        XEvent message{};
        message.xclient.type = ClientMessage;
        message.xclient.window = m_window;
        message.xclient.message_type = m_type;
        message.xclient.format = 32;
        ::XSendEvent(display(), m_window, 0, NoEventMask, &message);
        ::XFlush(display());
        if (takesInput)
            return eventually([this] { return m_isBack; });
        return waitUntil([this] {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            return m_isBack;
        });
    }

    bool nativeEventFilter(const QByteArray&, void* event, qintptr*) override {
        const auto* const message = static_cast<const xcb_client_message_event_t*>(event);
        const bool isMarker = (message->response_type & 0x7f) == XCB_CLIENT_MESSAGE &&
                              message->window == m_window && message->type == m_type;
        m_isBack = m_isBack || isMarker;
        return isMarker;
    }

private:
    const Window m_window;
    const Atom m_type;
    bool m_isBack = false;
};

int busy = 0; // how many WhileBusy there are

void flush() {
    if (!Marker().passes(busy == 0))
        throw std::runtime_error("the display has swallowed what it was sent");
    if (busy == 0)
        settle();
}

unsigned int buttonNumber(Qt::MouseButton button) {
    return button == Qt::RightButton ? 3 : button == Qt::MiddleButton ? 2 : 1;
}

void pressOrRelease(KeySym symbol, bool isPressed) {
    const KeyCode code = ::XKeysymToKeycode(display(), symbol);
    if (code == 0)
        throw std::logic_error("the keyboard has no such key");
    ::XTestFakeKeyEvent(display(), code, isPressed, 0);
}

KeySym symbolOf(int key) {
    static const std::map<int, KeySym> named{
        {Qt::Key_Escape, XK_Escape},
        {Qt::Key_Tab, XK_Tab},
        {Qt::Key_Backtab, XK_Tab},
        {Qt::Key_Backspace, XK_BackSpace},
        {Qt::Key_Return, XK_Return},
        {Qt::Key_Enter, XK_KP_Enter},
        {Qt::Key_Delete, XK_Delete},
        {Qt::Key_Home, XK_Home},
        {Qt::Key_End, XK_End},
        {Qt::Key_Left, XK_Left},
        {Qt::Key_Up, XK_Up},
        {Qt::Key_Right, XK_Right},
        {Qt::Key_Down, XK_Down},
        {Qt::Key_PageUp, XK_Prior},
        {Qt::Key_PageDown, XK_Next},
        {Qt::Key_Menu, XK_Menu},
        {Qt::Key_CapsLock, XK_Caps_Lock},
        {Qt::Key_Space, XK_space},
    };
    if (const auto found = named.find(key); found != named.end())
        return found->second;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return XK_F1 + static_cast<KeySym>(key - Qt::Key_F1);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return XK_a + static_cast<KeySym>(key - Qt::Key_A);
    return static_cast<KeySym>(key); // Latin 1 is numbered alike
}

constexpr std::array<std::pair<Qt::KeyboardModifier, KeySym>, 4> modifierKeys{
    {{Qt::ControlModifier, XK_Control_L},
     {Qt::ShiftModifier, XK_Shift_L},
     {Qt::AltModifier, XK_Alt_L},
     {Qt::MetaModifier, XK_Super_L}}};

void strike(int key, Qt::KeyboardModifiers modifiers) {
    for (const auto& [modifier, symbol] : modifierKeys)
        if (modifiers & modifier)
            pressOrRelease(symbol, true);
    pressOrRelease(symbolOf(key), true);
    pressOrRelease(symbolOf(key), false);
    for (const auto& [modifier, symbol] : modifierKeys)
        if (modifiers & modifier)
            pressOrRelease(symbol, false);
    flush();
}

} // namespace

realInput::WhileBusy::WhileBusy() {
    ++busy;
}

realInput::WhileBusy::~WhileBusy() {
    --busy;
}

void realInput::moveTo(const QPoint& onScreen) {
    const qreal scale = qGuiApp->devicePixelRatio();
    ::XTestFakeMotionEvent(display(), -1, qRound(onScreen.x() * scale), qRound(onScreen.y() * scale), 0);
    flush();
}

void realInput::press(Qt::MouseButton button) {
    ::XTestFakeButtonEvent(display(), buttonNumber(button), 1, 0);
    flush();
}

void realInput::release(Qt::MouseButton button) {
    ::XTestFakeButtonEvent(display(), buttonNumber(button), 0, 0);
    flush();
}

void realInput::click(const QWidget& widget, Qt::MouseButton button) {
    click(widget, widget.rect().center(), button);
}

void realInput::click(const QWidget& widget, const QPoint& place, Qt::MouseButton button) {
    moveTo(widget.mapToGlobal(place));
    press(button);
    release(button);
}

void realInput::doubleClick(const QWidget& widget, const QPoint& place) {
    moveTo(widget.mapToGlobal(place));
    for (int count = 0; count < 2; ++count) {
        ::XTestFakeButtonEvent(display(), 1, 1, 0);
        ::XTestFakeButtonEvent(display(), 1, 0, 0);
    }
    flush();
}

// A drag turns an event loop of its own from the first movement on, in which the steps have to come.
void realInput::drag(const QPoint& fromOnScreen, const QPoint& toOnScreen) {
    constexpr int steps = 20;
    constexpr std::chrono::milliseconds pace{10};
    moveTo(fromOnScreen);
    press();
    QEventLoop untilReleased;
    int step = 0;
    QTimer hand;
    QObject::connect(&hand, &QTimer::timeout, [&] {
        const qreal scale = qGuiApp->devicePixelRatio();
        const qreal part = std::min(1.0, qreal(++step) / steps); // some steps more at the end
        const QPointF at = QPointF(fromOnScreen) + QPointF(toOnScreen - fromOnScreen) * part;
        if (step < steps + 10)
            ::XTestFakeMotionEvent(display(), -1, qRound(at.x() * scale) + step % 2, qRound(at.y() * scale),
                                   0);
        else
            ::XTestFakeButtonEvent(display(), 1, 0, 0);
        ::XFlush(display());
        if (step > steps + 10)
            untilReleased.quit();
    });
    hand.start(pace);
    untilReleased.exec();
    flush();
}

void realInput::key(const QString& sequence) {
    const QKeyCombination wanted = QKeySequence(sequence, QKeySequence::PortableText)[0];
    strike(wanted.key(), wanted.keyboardModifiers());
}

void realInput::type(const QString& text) {
    for (const QChar each : text) {
        const Qt::KeyboardModifiers shift = each.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
        strike(each.isLetter() ? each.toUpper().unicode() : each.unicode(), shift);
    }
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    return QTest::qWaitFor(condition, static_cast<int>(limit.count()));
}

void settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
}

bool showAndActivate(QWidget& window) {
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    window.activateWindow();
    window.raise();
    return QTest::qWaitForWindowActive(&window);
}

} // namespace veilkeep::test
