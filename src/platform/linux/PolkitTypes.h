#pragma once

#include <QDBusArgument>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

// What polkit's bus interface passes around, under the signatures it has there.
namespace veilkeep {

struct PolkitSubject { // (sa{sv})
    QString kind;
    QVariantMap details;

    // This process, told apart from a later one of the same number by its start.
    static PolkitSubject thisProcess();
};

using PolkitDetails = QMap<QString, QString>; // a{ss}

struct PolkitResult { // (bba{ss})
    bool isAuthorized = false;
    bool isChallenge = false; // it would be after a question
    PolkitDetails details;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PolkitSubject& subject);
const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitSubject& subject);
QDBusArgument& operator<<(QDBusArgument& argument, const PolkitResult& result);
const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitResult& result);

void registerPolkitTypes(); // before any of them is sent

} // namespace veilkeep

Q_DECLARE_METATYPE(veilkeep::PolkitSubject)
Q_DECLARE_METATYPE(veilkeep::PolkitResult)
