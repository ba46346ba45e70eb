#pragma once

#include "platform/linux/checkup/BusFacts.h"

#include <chrono>
#include <string>

namespace veilkeep {

// Logs in to the bus at the address as any program does, on a connection that is closed again, and waits up
// to the limit for the answer: the bus library would wait for one that hangs. An empty address is a bus that
// is missing.
BusReach sayHelloTo(const std::string& address, std::chrono::milliseconds limit);

} // namespace veilkeep
