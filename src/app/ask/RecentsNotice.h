#pragma once

#include "platform/linux/SessionBusConnection.h"

#include <QObject>
#include <QString>

#include <chrono>

namespace veilkeep {

// Tells the application of the answer to the question about recent items, and stays on the bus until it can
// have looked at whose answer it is: while it hides a batch it hears nothing. Main thread.
class RecentsNotice : public QObject {
    Q_OBJECT

public:
    // Why nobody was told goes to the log.
    bool post(const QString& answer);

    // Runs the event loop until then; quit() ends it early.
    void stay(std::chrono::milliseconds grace = std::chrono::seconds(2));

signals:
    void quit();

private:
    SessionBusConnection m_bus;
};

} // namespace veilkeep
