#include "platform/linux/DelayInhibitor.h"

#include "core/log/Log.h"
#include "platform/linux/LogindCalls.h"

#include <QCoreApplication>
#include <QDBusUnixFileDescriptor>

#include <utility>

namespace veilkeep {

DelayInhibitor::DelayInhibitor(BusLink& bus, QString what) : m_bus(bus), m_what(std::move(what)) {}

void DelayInhibitor::take(const QString& logind) {
    QDBusMessage call = logindManagerCall(logind, QStringLiteral("Inhibit"));
    call << m_what << QCoreApplication::applicationName()
         << QCoreApplication::translate("DelayInhibitor", "Items have to be hidden first")
         << QStringLiteral("delay");
    m_asker = std::make_unique<QObject>();
    m_bus.ask(call, *m_asker, [this](const QDBusMessage& answer) {
        auto descriptor = answer.arguments().value(0).value<QDBusUnixFileDescriptor>();
        if (answer.type() == QDBusMessage::ReplyMessage && descriptor.isValid())
            m_descriptor.reset(descriptor.takeFileDescriptor()); // else a copy would live on in the answer
        else
            logLine("Cannot hold up " + m_what.toStdString() + ": " + answer.errorMessage().toStdString());
    });
}

void DelayInhibitor::release() {
    m_asker.reset();
    m_descriptor.reset();
}

} // namespace veilkeep
