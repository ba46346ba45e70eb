#include "platform/linux/SystemBus.h"

#include <QDBusPendingCall>
#include <QString>
#include <QUuid>

#include <future>
#include <limits>
#include <system_error>

namespace veilkeep {
namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

void waitTicking(const std::future<void>& answered, Tick& tick) {
    while (const auto due = tick.nextDue()) {
        if (answered.wait_until(*due) == std::future_status::ready)
            break;
        tick.callWhenDue();
    }
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
    QDBusPendingCall answer = m_connection.asyncCall(message, timeout);
    if (tick.nextDue()) {
        try {
            waitTicking(std::async(std::launch::async, [answer]() mutable { answer.waitForFinished(); }),
                        tick);
        } catch (const std::system_error&) { // no thread to be had: it is waited for without the tick
        }
    }
    answer.waitForFinished();
    return answer.reply();
}

void SystemBus::send(const QDBusMessage& call) const {
    m_connection.send(call);
}

} // namespace veilkeep
