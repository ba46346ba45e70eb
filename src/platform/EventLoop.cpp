#include "platform/EventLoop.h"

#include <QAbstractEventDispatcher>

namespace veilkeep {

void wakeEventLoop() {
    if (QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance())
        dispatcher->wakeUp();
}

} // namespace veilkeep
