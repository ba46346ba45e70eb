#include "app/ask/FrontWindows.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace veilkeep {
namespace {

bool isWindowOfItsOwn(const QWidget& widget) {
    const Qt::WindowType type = widget.windowType();
    return widget.isWindow() && (type == Qt::Dialog || type == Qt::Window);
}

} // namespace

// The event comes before the window is on the screen, so that it appears where it stays.
bool FrontWindows::eventFilter(QObject* object, QEvent* event) {
    auto* const window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(object) : nullptr;
    if (window && !event->spontaneous() && isWindowOfItsOwn(*window)) {
        if (window->windowHandle())
            window->windowHandle()->setFlag(Qt::WindowStaysOnTopHint);
        const auto raise = [window] {
            window->raise();
            window->activateWindow(); // with the activation token of the environment, where there is one
        };
        QMetaObject::invokeMethod(window, raise, Qt::QueuedConnection);
    }
    return QObject::eventFilter(object, event);
}

} // namespace veilkeep
