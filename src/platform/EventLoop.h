#pragma once

namespace veilkeep {

// To be called before an event loop runs inside of an event, on its thread: the dispatcher sees what was
// posted before that event's delivery only when it is woken.
void wakeEventLoop();

} // namespace veilkeep
