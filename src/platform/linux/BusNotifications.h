#pragma once

#include "platform/DistributedNotifications.h"
#include "platform/linux/SessionBusConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <deque>
#include <optional>

namespace veilkeep {

// Notifications as signals at "/com/ostrel/Veilkeep" of the session bus: the name is interface and member,
// the object a text. Another user's are ignored. What was posted while there was no bus is lost. Main thread.
class BusNotifications : public DistributedNotifications {
    Q_OBJECT

public:
    BusNotifications() { listen(); }

    void listen(); // on the bus as it is now; does nothing while it is heard
    bool isListening() const { return m_isListening && m_bus->isConnected(); }

    // Names of "com.ostrel.Veilkeep" and one word.
    [[nodiscard]] Result<void> post(const QString& name, const QString& object) override;

private slots:
    void received(const QDBusMessage& signal);

private:
    struct Waiting { // for the bus to say whose it is
        QDBusPendingCall unixUser;
        QString name;
        QString object;
    };

    void passOn();

    std::optional<SessionBusConnection> m_bus; // made anew for another bus
    bool m_isListening = false;
    std::deque<Waiting> m_waiting; // in the order of their arrival
};

} // namespace veilkeep
