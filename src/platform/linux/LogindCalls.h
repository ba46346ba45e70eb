#pragma once

#include <QDBusMessage>
#include <QLatin1String>
#include <QString>

// logind's names on the system bus. Calls go to the bus connection that owns its name, so that nothing is
// started by them.
namespace veilkeep {

inline constexpr QLatin1String logindService("org.freedesktop.login1");
inline constexpr QLatin1String logindObject("/org/freedesktop/login1");
inline constexpr QLatin1String logindManager("org.freedesktop.login1.Manager");
inline constexpr QLatin1String logindSession("org.freedesktop.login1.Session");
inline constexpr QLatin1String logindUser("org.freedesktop.login1.User");
inline constexpr QLatin1String busProperties("org.freedesktop.DBus.Properties");

inline QDBusMessage logindManagerCall(const QString& logind, const QString& method) {
    return QDBusMessage::createMethodCall(logind, logindObject, logindManager, method);
}

inline QDBusMessage propertyCall(const QString& service, const QString& path, const QString& interface,
                                 const QString& property) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, busProperties, QStringLiteral("Get"));
    call << interface << property;
    return call;
}

} // namespace veilkeep
