#pragma once

#include "platform/linux/BusLink.h"
#include "platform/linux/BusOwners.h"

#include <QDBusMessage>
#include <QLatin1String>
#include <QObject>

namespace veilkeep {

// Who knows of them, on the session bus.
inline constexpr QLatin1String trayWatcher("org.kde.StatusNotifierWatcher");
inline constexpr QLatin1String trayWatcherObject("/StatusNotifierWatcher");
inline constexpr QLatin1String trayHostProperty("IsStatusNotifierHostRegistered");

// Whether something shows tray icons (StatusNotifierItem). Listens only, and starts nobody. Main thread.
class TrayHost : public QObject {
    Q_OBJECT

public:
    explicit TrayHost(BusLink& sessionBus); // before the bus is started

    bool isAvailable() const { return m_isAvailable; }

signals:
    void availableChanged(bool isAvailable);

private slots:
    void hostsChanged(const QDBusMessage& signal);

private:
    void talkTo(const QString& watcher);
    void askForHosts();
    void set(bool isAvailable);

    BusLink& m_bus;
    BusOwners m_watcher;
    QString m_owner;
    unsigned int m_questions = 0; // so far; the last one's answer counts
    bool m_isAvailable = false;
};

} // namespace veilkeep
