#pragma once

#include "platform/linux/checkup/BusFacts.h"

#include <chrono>

namespace veilkeep {

// How long each bus may take to let in, and then all on both of them together to answer.
struct BusCheckupLimits {
    std::chrono::milliseconds hello{600};
    std::chrono::milliseconds answers{1400};
};

struct BusesFacts {
    SessionBusFacts session;
    SystemBusFacts system;
};

// Asks both buses, and those on them that Veilkeep works with. Turns an event loop of its own; main thread.
BusesFacts askBuses(const BusCheckupLimits& limits);

} // namespace veilkeep
