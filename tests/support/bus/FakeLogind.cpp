#include "tests/support/bus/FakeLogind.h"

#include "platform/linux/LogindCalls.h"
#include "tests/support/WaitUntil.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

constexpr const char* mockInterface = "org.freedesktop.DBus.Mock";

} // namespace

FakeLogind::FakeLogind(const char* parameters)
    : m_program({"/usr/bin/python3", "-m", "dbusmock", "--logfile", "/dev/null", "--template", "logind",
                 "--parameters", parameters}),
      m_connection(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                                 QUuid::createUuid().toString())) {
    if (!waitUntil([&] { return m_connection.interface()->isServiceRegistered(logindService); })) {
        m_whyMissing = "python3-dbusmock cannot be started here";
        return;
    }
    const uint user = ::getuid();
    mock(logindObject, "AddSession", {"c2", "seat0", user, "somebody", true});
    mock(logindObject, "AddSession", {"m1", "seat0", user, "somebody", true});
    set("Class", "manager", logindSessions + "m1");
    setPair(logindSessions + "m1", logindSession, "Seat", {}, "/");
}

void FakeLogind::showSession() {
    const QString c2 = logindSessions + "c2";
    answer("GetUser", "u o", QStringLiteral("ret = '/org/freedesktop/login1/user/%s' % args[0]"));
    answer("GetSession", "s o", QStringLiteral("ret = '%1' + {'auto': 'c2'}[args[0]]").arg(logindSessions));
    emitManagerSignal("SessionNew", "so", {"c2", QVariant::fromValue(QDBusObjectPath(c2))});
}

FakeLogind::~FakeLogind() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void FakeLogind::announce(const char* name, bool begins) {
    setPreparing(name, begins);
    emitManagerSignal(qPrintable(QStringLiteral("PrepareFor") + name), QStringLiteral("b"), {begins});
}

void FakeLogind::setPreparing(const char* name, bool isPreparing) {
    mock(logindObject, "UpdateProperties",
         {QString(logindManager), QVariantMap{{QStringLiteral("PreparingFor") + name, isPreparing}}});
}

void FakeLogind::set(const char* property, const QVariant& value, const QString& session) {
    mock(session, "UpdateProperties", {QString(logindSession), QVariantMap{{property, value}}});
}

void FakeLogind::emitSignal(const char* signal, const QString& session) {
    mock(session, "EmitSignal", {QString(logindSession), signal, QString(), QVariantList()});
}

void FakeLogind::emitManagerSignal(const char* signal, const QString& signature,
                                   const QVariantList& arguments) {
    mock(logindObject, "EmitSignal", {QString(logindManager), signal, signature, QVariant(arguments)});
}

void FakeLogind::answer(const char* method, const char* signatures, const QString& code) {
    const QStringList inAndOut = QString::fromLatin1(signatures).split(' ');
    mock(logindObject, "AddMethod", {QString(logindManager), method, inAndOut[0], inAndOut[1], code});
}

void FakeLogind::setDisplay(const QString& session) {
    setPair(QStringLiteral("/org/freedesktop/login1/user/%1").arg(::getuid()), logindUser, "Display",
            session.section('/', -1), session.isEmpty() ? QStringLiteral("/") : session);
}

void FakeLogind::setPair(const QString& path, const QString& interface, const char* property,
                         const QString& name, const QString& object) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << name << QDBusObjectPath(object);
    argument.endStructure();
    call(path, busProperties.data(), "Set",
         {interface, property, QVariant::fromValue(QDBusVariant(QVariant::fromValue(argument)))});
}

QStringList FakeLogind::inhibitors() {
    QStringList held;
    const QDBusMessage reply = call(logindObject, logindManager.data(), "ListInhibitors", {});
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString what, who, why, mode;
        uint user = 0, process = 0;
        list.beginStructure();
        list >> what >> who >> why >> mode >> user >> process;
        list.endStructure();
        held << what + (mode == "delay" ? "" : " not delayed");
    }
    list.endArray();
    held.sort();
    return held;
}

QDBusMessage FakeLogind::call(const QString& path, const char* interface, const char* method,
                              const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(logindService, path, interface, method);
    message.setArguments(arguments);
    return m_connection.call(message);
}

void FakeLogind::mock(const QString& path, const char* method, const QVariantList& arguments) {
    const QDBusMessage reply = call(path, mockInterface, method, arguments);
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage)
        << method << ": " << reply.errorMessage().toStdString();
}

} // namespace veilkeep::test
