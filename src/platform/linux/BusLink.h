#pragma once

#include "core/base/UniqueFd.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace veilkeep {

// A connection of its owner's own to a message bus that is kept up: made without waiting for the bus, and
// made again when the bus was started anew. Costs nothing while it is up. Main thread.
class BusLink : public QObject {
    Q_OBJECT

public:
    enum class Bus { System, Session }; // where the environment says, each time it is looked for

    explicit BusLink(Bus bus);
    ~BusLink() override;

    static std::string addressOf(Bus bus); // as the environment says; empty where there is none

    void start();

    bool isUp() const { return m_isUp; }
    QDBusConnection& connection() { return m_connection; }

    // The slot takes a QDBusMessage. The service is a unique name: of a well-known one the bus library would
    // ask for the owner, and wait. Hooks last as long as the bus does.
    void hook(const QString& service, const QString& path, const QString& interface, const char* signal,
              QObject* receiver, const char* slot);

    // Whoever is asked may take as long as it likes. The answer, which may be an error message, is dropped
    // when the asker is gone by then or the bus is.
    void ask(const QDBusMessage& call, const QObject& asker,
             std::function<void(const QDBusMessage& answer)> answered);

signals:
    void cameUp(); // nothing is hooked to the connection yet
    void wentDown();

private slots:
    void lose();

private:
    void look();
    void greet(const std::string& address);
    void endGreeting();
    void connectTo(const std::string& address);
    void lookAgainLater();
    const char* name() const { return m_bus == Bus::System ? "system" : "session"; }

    Bus m_bus;
    QDBusConnection m_connection;
    bool m_isUp = false;
    bool m_isMissed = false; // the log has a line of it
    UniqueFd m_greeted;      // while its answer is waited for
    std::unique_ptr<QSocketNotifier> m_answer;
    QTimer m_timer; // ends a greeting without an answer, or the pause between two looks
    std::chrono::milliseconds m_pause;
};

} // namespace veilkeep
