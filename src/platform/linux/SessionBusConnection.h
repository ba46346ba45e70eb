#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

namespace veilkeep {

// A connection of its owner's own to the user's message bus, made with the object and closed with it. Never
// starts a bus. Any thread.
class SessionBusConnection {
public:
    SessionBusConnection();
    ~SessionBusConnection();
    SessionBusConnection(const SessionBusConnection&) = delete;
    SessionBusConnection& operator=(const SessionBusConnection&) = delete;

    QDBusConnection& connection() { return m_connection; }
    bool isConnected() const { return m_connection.isConnected(); }

    // Of the bus itself; an error message after five seconds.
    QDBusMessage askBus(const QString& method, const QString& name) const;
    static QDBusMessage busCall(const QString& method, const QString& name); // the same, to be sent

    // Works on events meanwhile, on the thread of the application, and has no limit. What QDBus::BlockWithGui
    // does would wait for ever where the answer comes before its event loop is connected.
    QDBusMessage callWithEvents(const QDBusMessage& call) const;

    // Whether the connection with this unique name belongs to the user of this process.
    bool isOwnUsers(const QString& uniqueName) const;
    static bool isOwnUser(const QDBusMessage& unixUser); // what "GetConnectionUnixUser" answered

private:
    QDBusConnection m_connection;
};

} // namespace veilkeep
