#pragma once

#include "core/process/Tick.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>
#include <optional>

namespace veilkeep {

// A connection of its own to the system bus, for a few calls; a bus that was started anew is found again
// with the next one. Any thread.
class SystemBus {
public:
    SystemBus();
    ~SystemBus();
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    // Waits for the answer, which is an error message too where the bus or the service is not there; without
    // a limit for as long as the service takes. Calls the tick meanwhile.
    QDBusMessage call(const QDBusMessage& message, std::optional<std::chrono::milliseconds> limit,
                      Tick& tick) const;

    void send(const QDBusMessage& call) const; // after the calls before it, without an answer

private:
    QDBusConnection m_connection;
};

} // namespace veilkeep
