#include "platform/linux/PolkitTypes.h"

#include <QByteArray>
#include <QDBusMetaType>
#include <QFile>
#include <QList>

#include <unistd.h>

namespace veilkeep {
namespace {

// In clock ticks since the system's start; 0, on which polkit looks it up itself, where it cannot be read.
// The program's name comes before it in brackets and may hold anything.
qulonglong startTime() {
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray line = file.readAll();
    constexpr int fieldAfterName = 20;
    return line.mid(line.lastIndexOf(')') + 1).split(' ').value(fieldAfterName).toULongLong();
}

} // namespace

PolkitSubject PolkitSubject::thisProcess() {
    return {QStringLiteral("unix-process"),
            {{QStringLiteral("pid"), static_cast<uint>(::getpid())},
             {QStringLiteral("start-time"), startTime()},
             {QStringLiteral("uid"), static_cast<int>(::getuid())}}};
}

QDBusArgument& operator<<(QDBusArgument& argument, const PolkitSubject& subject) {
    argument.beginStructure();
    argument << subject.kind << subject.details;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitSubject& subject) {
    argument.beginStructure();
    argument >> subject.kind >> subject.details;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PolkitResult& result) {
    argument.beginStructure();
    argument << result.isAuthorized << result.isChallenge << result.details;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitResult& result) {
    argument.beginStructure();
    argument >> result.isAuthorized >> result.isChallenge >> result.details;
    argument.endStructure();
    return argument;
}

void registerPolkitTypes() {
    qDBusRegisterMetaType<PolkitSubject>();
    qDBusRegisterMetaType<PolkitDetails>();
    qDBusRegisterMetaType<PolkitResult>();
}

} // namespace veilkeep
