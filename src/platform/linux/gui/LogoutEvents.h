#pragma once

#include "platform/SessionEvents.h"

#include <QGuiApplication>
#include <QObject>

namespace veilkeep {

// X11 session management, as a wish to end that the events tell. What is done about it is done before the
// logout goes on, and never stops it. A desktop may ask the same when it only notes what is open: it ends the
// program by a message of its own, which the application object obeys. Main thread.
class LogoutEvents : public QObject {
    Q_OBJECT

public:
    LogoutEvents(QGuiApplication& application, SessionEvents& events);
};

} // namespace veilkeep
