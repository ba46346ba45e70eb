#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <functional>
#include <mutex>
#include <vector>

namespace veilkeep::test {

// Stands for a service of a message bus: answers every call at every object by one function, in a thread of
// its own, and remembers the calls. Without a name it is known by its connection alone. An
// invalid message is no answer yet.
class BusService : private QDBusVirtualObject {
public:
    using Handler = std::function<QDBusMessage(const QDBusMessage& call)>;

    BusService(const QString& name, Handler handler,
               QDBusConnection::BusType bus = QDBusConnection::SystemBus);
    ~BusService() override;

    std::vector<QDBusMessage> calls(const QString& method) const;
    QDBusConnection& connection() { return m_connection; }

private:
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString&) const override { return {}; }

    QDBusConnection m_connection;
    QThread m_thread;
    Handler m_handler;
    mutable std::mutex m_mutex;
    std::vector<QDBusMessage> m_calls;
};

} // namespace veilkeep::test
