#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <mutex>

namespace veilkeep::test {

// org.kde.StatusNotifierWatcher, with a connection of its own.
class FakeTrayWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    FakeTrayWatcher();
    ~FakeTrayWatcher() override;

    bool hasHost() const { return m_hasHost; }
    void setHost(bool isThere); // any thread
    QStringList items() const;  // any thread
    static int protocolVersion() { return 0; }

signals:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();
    void StatusNotifierItemRegistered(const QString& item);

public slots:
    void RegisterStatusNotifierItem(const QString& service);

private:
    QDBusConnection m_connection;
    QDBusServiceWatcher m_leaving;
    std::atomic<bool> m_hasHost = true;
    mutable std::mutex m_mutex;
    QStringList m_items;
};

} // namespace veilkeep::test
