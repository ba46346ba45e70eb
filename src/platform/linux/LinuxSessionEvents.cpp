#include "platform/linux/LinuxSessionEvents.h"

#include "platform/linux/LogindCalls.h"

#include <utility>

namespace veilkeep {

LinuxSessionEvents::LinuxSessionEvents(std::chrono::milliseconds sleepCheckInterval)
    : m_logind(m_systemBus, {logindService}), m_power(m_systemBus, sleepCheckInterval) {
    connectPower();
    connectLocks();
    connect(&m_sessionBus, &BusLink::cameUp, this, &LinuxSessionEvents::sessionBusCameUp);
    connect(&m_quitSignals, &QuitSignals::quitAsked, this, [this] { emit endRequested(Ending::Signal); });
}

void LinuxSessionEvents::start() {
    m_quitSignals.start();
    m_systemBus.start();
    m_sessionBus.start();
}

void LinuxSessionEvents::release() {
    m_power.release();
    m_quitSignals.handled();
}

void LinuxSessionEvents::connectPower() {
    connect(&m_logind, &BusOwners::changed, this, [this](const QString&, const QString& owner) {
        m_power.talkTo(owner);
        m_session.talkTo(owner);
    });
    connect(&m_power, &LogindPower::sleepChanged, this,
            [this](bool isAsleep) { emit absenceChanged(Absence::Sleep, isAsleep); });
    connect(&m_power, &LogindPower::shutdownBegan, this, [this] { emit endRequested(Ending::Shutdown); });
}

void LinuxSessionEvents::connectLocks() {
    connect(&m_session, &LogindSession::activeChanged, this, [this](bool isActive) {
        if (std::exchange(m_isActive, isActive) != isActive)
            emit absenceChanged(Absence::Session, !isActive);
    });
    connect(&m_session, &LogindSession::lockedHintChanged, this, [this](bool isLocked) {
        m_lockSigns.setHint(isLocked);
        tellLock();
    });
    connect(&m_session, &LogindSession::lockAsked, this, [this] {
        m_lockSigns.askToLock();
        tellLock();
    });
    connect(&m_session, &LogindSession::userNoticed, this, [this] {
        m_power.noticeUser();
        m_lockSigns.noticeUser();
        tellLock();
    });
    connect(&m_screenSavers, &ScreenSavers::activeChanged, this, [this](bool isActive) {
        m_lockSigns.setCovered(isActive);
        tellLock();
    });
    connect(&m_screenSavers, &ScreenSavers::hintingLockerChanged, this, [this](bool isRunning) {
        m_lockSigns.setHintingLocker(isRunning);
        tellLock();
    });
}

void LinuxSessionEvents::tellLock() {
    const bool isLocked = m_lockSigns.isLocked();
    if (std::exchange(m_isLocked, isLocked) != isLocked)
        emit absenceChanged(Absence::Lock, isLocked);
}

} // namespace veilkeep
