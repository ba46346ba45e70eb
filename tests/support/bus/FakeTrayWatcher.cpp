#include "tests/support/bus/FakeTrayWatcher.h"

#include "core/environment/SessionBus.h"

#include <QDBusMessage>
#include <QUuid>

#include <stdexcept>

namespace veilkeep::test {

FakeTrayWatcher::FakeTrayWatcher()
    : m_connection(QDBusConnection::connectToBus(QString::fromStdString(sessionBusAddress()),
                                                 QUuid::createUuid().toString(QUuid::WithoutBraces))) {
    m_leaving.setParent(this);
    m_leaving.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    m_leaving.setConnection(m_connection);
    connect(&m_leaving, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& item) {
        const std::lock_guard lock(m_mutex);
        m_items.removeAll(item);
    });
    if (!m_connection.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents) ||
        !m_connection.registerService("org.kde.StatusNotifierWatcher"))
        throw std::runtime_error("no tray on the bus: " + m_connection.lastError().message().toStdString());
}

FakeTrayWatcher::~FakeTrayWatcher() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void FakeTrayWatcher::setHost(bool isThere) {
    m_hasHost = isThere;
    QMetaObject::invokeMethod(this, [this, isThere] {
        if (isThere)
            emit StatusNotifierHostRegistered();
        else
            emit StatusNotifierHostUnregistered();
    });
}

QStringList FakeTrayWatcher::items() const {
    const std::lock_guard lock(m_mutex);
    return m_items;
}

void FakeTrayWatcher::RegisterStatusNotifierItem(const QString& /*service*/) {
    const QString item = message().service();
    m_leaving.addWatchedService(item);
    {
        const std::lock_guard lock(m_mutex);
        m_items.removeAll(item);
        m_items.append(item);
    }
    emit StatusNotifierItemRegistered(item);
}

} // namespace veilkeep::test
