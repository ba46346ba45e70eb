#include "platform/linux/gui/LogoutEvents.h"

namespace veilkeep {

LogoutEvents::LogoutEvents(QGuiApplication& application, SessionEvents& events) {
    connect(
        &application, &QGuiApplication::commitDataRequest, this,
        [&events] { emit events.endRequested(Ending::Logout); }, Qt::DirectConnection);
}

} // namespace veilkeep
