#include "platform/linux/SystemBus.h"

#include <QString>
#include <QUuid>

#include <future>
#include <limits>
#include <system_error>

namespace veilkeep {
namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

QDBusMessage waitTicking(std::future<QDBusMessage> answer, Tick& tick) {
    while (const auto due = tick.nextDue()) {
        if (answer.wait_until(*due) == std::future_status::ready)
            break;
        tick.callWhenDue();
    }
    return answer.get();
}

} // namespace

SystemBus::SystemBus()
    : m_connection(QDBusConnection::connectToBus(QDBusConnection::SystemBus,
                                                 QUuid::createUuid().toString(QUuid::WithoutBraces))) {}

SystemBus::~SystemBus() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

QDBusMessage SystemBus::call(const QDBusMessage& message, std::optional<std::chrono::milliseconds> limit,
                             Tick& tick) const {
    const int timeout = limit ? static_cast<int>(limit->count()) : unlimited;
    const auto ask = [&] { return m_connection.call(message, QDBus::Block, timeout); };
    if (!tick.nextDue())
        return ask();
    try {
        return waitTicking(std::async(std::launch::async, ask), tick);
    } catch (const std::system_error&) { // no thread to be had
        return ask();
    }
}

} // namespace veilkeep
