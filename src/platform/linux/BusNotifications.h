#pragma once

#include "platform/DistributedNotifications.h"
#include "platform/linux/SessionBusConnection.h"

#include <QDBusMessage>

namespace veilkeep {

// Notifications as signals at "/com/ostrel/Veilkeep" of the session bus: the name is interface and member,
// the object a text. Another user's are ignored. What was posted while there was no bus is lost. Main thread.
class BusNotifications : public DistributedNotifications {
    Q_OBJECT

public:
    BusNotifications(); // listens from here on

    bool isListening() const { return m_isListening && m_bus.isConnected(); }

    // Names of "com.ostrel.Veilkeep" and one word.
    [[nodiscard]] Result<void> post(const QString& name, const QString& object) override;

private slots:
    void received(const QDBusMessage& signal);

private:
    SessionBusConnection m_bus;
    bool m_isListening = false;
};

} // namespace veilkeep
