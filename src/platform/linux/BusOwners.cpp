#include "platform/linux/BusOwners.h"

#include "platform/linux/SessionBusConnection.h"

#include <utility>

namespace veilkeep {

BusOwners::BusOwners(BusLink& bus, QStringList names) : m_bus(bus), m_names(std::move(names)) {
    connect(&m_bus, &BusLink::cameUp, this, &BusOwners::askAgain);
}

void BusOwners::askAgain() {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    m_told.clear();
    for (const QString& name : m_names) {
        m_bus.connection().connect(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                   QStringLiteral("NameOwnerChanged"), {name}, QStringLiteral("sss"), this,
                                   SLOT(noticed(QString, QString, QString)));
        m_bus.ask(SessionBusConnection::busCall(QStringLiteral("GetNameOwner"), name), *this,
                  [this, name, link = m_bus.connection().name()](const QDBusMessage& answer) {
                      // A change may be told before the answer that is older than it.
                      if (m_told.contains(name) || link != m_bus.connection().name())
                          return;
                      const bool isOwned = answer.type() == QDBusMessage::ReplyMessage;
                      set(name, isOwned ? answer.arguments().value(0).toString() : QString());
                  });
    }
}

void BusOwners::noticed(const QString& name, const QString& /*before*/, const QString& owner) {
    set(name, owner);
}

void BusOwners::set(const QString& name, const QString& owner) {
    if (m_told.contains(name) && m_owners.value(name) == owner)
        return;
    m_told.insert(name);
    m_owners[name] = owner;
    emit changed(name, owner);
}

} // namespace veilkeep
