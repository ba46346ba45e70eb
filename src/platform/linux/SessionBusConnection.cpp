#include "platform/linux/SessionBusConnection.h"

#include "core/environment/SessionBus.h"
#include "platform/linux/BusProbe.h"
#include "platform/linux/BusRequest.h"

#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QUuid>

#include <unistd.h>

#include <chrono>

namespace veilkeep {
namespace {

constexpr int busLimit = 5'000; // milliseconds

// Without an address the bus library would start a bus.
QDBusConnection connectionToUsersBus() {
    const std::string address = sessionBusAddress();
    if (address.empty() || !answersAsBus(address, std::chrono::milliseconds(busLimit)))
        return QDBusConnection(QString());
    return QDBusConnection::connectToBus(QString::fromStdString(address),
                                         QUuid::createUuid().toString(QUuid::WithoutBraces));
}

} // namespace

SessionBusConnection::SessionBusConnection() : m_connection(connectionToUsersBus()) {}

SessionBusConnection::~SessionBusConnection() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

QDBusMessage SessionBusConnection::busCall(const QString& method, const QString& name) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call =
        QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    call << name;
    return call;
}

QDBusMessage SessionBusConnection::askBus(const QString& method, const QString& name) const {
    return m_connection.call(busCall(method, name), QDBus::Block, busLimit);
}

QDBusMessage SessionBusConnection::callWithEvents(const QDBusMessage& call) const {
    const QDBusPendingCallWatcher answer(m_connection.asyncCall(call, withoutLimit));
    QEventLoop loop;
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!answer.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    return answer.reply();
}

bool SessionBusConnection::isOwnUsers(const QString& uniqueName) const {
    return isOwnUser(askBus(QStringLiteral("GetConnectionUnixUser"), uniqueName));
}

bool SessionBusConnection::isOwnUser(const QDBusMessage& unixUser) {
    return unixUser.type() == QDBusMessage::ReplyMessage &&
           unixUser.arguments().value(0) == QVariant(static_cast<uint>(::getuid()));
}

} // namespace veilkeep
