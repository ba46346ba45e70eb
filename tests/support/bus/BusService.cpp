#include "tests/support/bus/BusService.h"

#include "core/environment/SessionBus.h"

#include <stdexcept>

namespace veilkeep::test {

namespace {

// By its address: the bus library has none for the user's bus while the effective user is another one.
QDBusConnection connectionTo(QDBusConnection::BusType bus, const QString& name) {
    if (bus == QDBusConnection::SessionBus)
        return QDBusConnection::connectToBus(QString::fromStdString(sessionBusAddress()), name);
    return QDBusConnection::connectToBus(bus, name);
}

} // namespace

BusService::BusService(const QString& name, Handler handler, QDBusConnection::BusType bus)
    : m_connection(connectionTo(bus, QStringLiteral("service") + name)), m_handler(std::move(handler)) {
    if (!m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath) ||
        (!name.isEmpty() && !m_connection.registerService(name)))
        throw std::runtime_error("no service on the bus: " +
                                 m_connection.lastError().message().toStdString());
    moveToThread(&m_thread);
    m_thread.start();
}

BusService::~BusService() {
    m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus(m_connection.name());
    m_thread.quit();
    m_thread.wait();
}

std::vector<QDBusMessage> BusService::calls(const QString& method) const {
    const std::lock_guard lock(m_mutex);
    std::vector<QDBusMessage> found;
    for (const QDBusMessage& call : m_calls)
        if (call.member() == method)
            found.push_back(call);
    return found;
}

bool BusService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(message);
    }
    const QDBusMessage answer = m_handler(message);
    return answer.type() == QDBusMessage::InvalidMessage || connection.send(answer);
}

} // namespace veilkeep::test
