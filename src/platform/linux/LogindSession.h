#pragma once

#include "platform/linux/BusLink.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace veilkeep {

// The user's session as logind knows it. It is looked for at its own object path, since signals are not sent
// at the paths that stand for "the caller's session", and looked for again when sessions come and go. Values
// stay as they were while logind is not there. Main thread.
class LogindSession : public QObject {
    Q_OBJECT

public:
    explicit LogindSession(BusLink& bus) : m_bus(bus) {}

    void talkTo(const QString& logind); // its bus connection, empty where it is not there

signals:
    void searched(const QString& path); // after each search: the session's object, empty where there is none
    void lockedHintChanged(bool isLocked); // told at first too
    void activeChanged(bool isActive);     // the same
    void lockAsked();                      // of the locker, which may not do it
    void userNoticed();                    // who is there has unlocked, or come back to the session

private slots:
    void sessionCame(const QDBusMessage& signal);
    void sessionWent(const QDBusMessage& signal);
    void propertiesChanged(const QDBusMessage& signal);
    void lock(const QDBusMessage& signal);
    void unlock(const QDBusMessage& signal);

private:
    using Answered = std::function<void(const QDBusMessage&)>;

    void find();
    void tryNextWay();
    void askForPath(const QDBusMessage& call);
    void consider(const QString& path);
    void adopt(const QString& path);
    void readProperties();
    void apply(const QVariantMap& properties, bool isChange);
    void set(std::optional<bool>& known, const QVariant& value, bool meansUser, bool isChange,
             void (LogindSession::*changed)(bool));
    void ask(const QDBusMessage& call, Answered answered);

    BusLink& m_bus;
    QString m_logind;
    std::unique_ptr<QObject> m_asker;          // goes with the search that it asked for
    std::vector<std::function<void()>> m_ways; // to the session that are still to be tried, the next one last
    QString m_path;
    QString m_secondBest;    // a session of the user's without a seat
    bool m_isMissed = false; // the log has a line of it
    std::optional<bool> m_lockedHint, m_active;
};

} // namespace veilkeep
