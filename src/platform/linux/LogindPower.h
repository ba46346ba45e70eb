#pragma once

#include "platform/linux/BusLink.h"
#include "platform/linux/DelayInhibitor.h"

#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

namespace veilkeep {

// The system's sleep and shutdown as logind announces them, both held up from the beginning. While the system
// is thought to sleep, and only then, logind is asked now and then: it has been seen not to tell of the end.
// Main thread.
class LogindPower : public QObject {
    Q_OBJECT

public:
    explicit LogindPower(BusLink& bus, std::chrono::milliseconds checkInterval = std::chrono::seconds(3));

    void talkTo(const QString& logind); // its bus connection, empty where it is not there
    void noticeUser();                  // who is there has woken the system
    void release();                     // what is under way need not wait any longer

signals:
    void sleepChanged(bool isAsleep);
    void shutdownBegan();

private slots:
    void prepareForSleep(const QDBusMessage& signal);
    void prepareForShutdown(const QDBusMessage& signal);

private:
    void askWhetherPreparing(const char* property, void (LogindPower::*set)(bool));
    void setSleeping(bool isSleeping);
    void setShuttingDown(bool isShuttingDown);
    void takeAgain(DelayInhibitor& inhibitor);
    void checkForWake();

    BusLink& m_bus;
    QString m_logind;
    std::unique_ptr<QObject> m_asker; // goes with the logind that it asked
    DelayInhibitor m_sleepInhibitor, m_shutdownInhibitor;
    bool m_isSleeping = false;
    bool m_isShuttingDown = false;
    QTimer m_check;
    int m_checksWithoutAnswer = 0;
};

} // namespace veilkeep
