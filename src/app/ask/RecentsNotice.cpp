#include "app/ask/RecentsNotice.h"

#include "core/log/Log.h"
#include "platform/linux/BusRequest.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QTimer>

#include <limits>

namespace veilkeep {

bool RecentsNotice::post(const QString& answer) {
    QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/com/ostrel/Veilkeep"),
                                                     QStringLiteral("com.ostrel.Veilkeep"),
                                                     QStringLiteral("ShouldCleanRecents"));
    signal << answer;
    if (m_bus.isConnected() && m_bus.connection().send(signal))
        return true;
    logLine("Could not post com.ostrel.Veilkeep.ShouldCleanRecents.");
    return false;
}

// Whoever answers a later call works on what comes from the bus, and soon on the signal. Where nobody has the
// name the call fails at once.
void RecentsNotice::stay(std::chrono::milliseconds grace) {
    QDBusMessage call = QDBusMessage::createMethodCall(requestService, requestObject,
                                                       QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                                       QStringLiteral("Introspect"));
    call.setAutoStartService(false);
    const QDBusPendingCallWatcher heard(m_bus.connection().asyncCall(call, std::numeric_limits<int>::max()));
    QEventLoop loop;
    connect(this, &RecentsNotice::quit, &loop, &QEventLoop::quit);
    connect(&heard, &QDBusPendingCallWatcher::finished, &loop,
            [&] { QTimer::singleShot(grace, &loop, &QEventLoop::quit); });
    loop.exec();
}

} // namespace veilkeep
