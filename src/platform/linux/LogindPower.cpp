#include "platform/linux/LogindPower.h"

#include "core/log/Log.h"
#include "platform/linux/LogindCalls.h"

#include <QDBusVariant>

#include <optional>
#include <utility>

namespace veilkeep {
namespace {

// After that many the system is taken to be awake: this program ran all the while.
constexpr int checksWithoutAnswerLimit = 5;

std::optional<bool> booleanOf(const QVariant& value) {
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

} // namespace

LogindPower::LogindPower(BusLink& bus, std::chrono::milliseconds checkInterval)
    : m_bus(bus),
      m_sleepInhibitor(bus, QStringLiteral("sleep")),
      m_shutdownInhibitor(bus, QStringLiteral("shutdown")) {
    m_check.setInterval(checkInterval);
    connect(&m_check, &QTimer::timeout, this, &LogindPower::checkForWake);
}

void LogindPower::talkTo(const QString& logind) {
    m_logind = logind;
    m_asker = std::make_unique<QObject>();
    if (logind.isEmpty())
        return;
    m_bus.hook(logind, logindObject, logindManager, "PrepareForSleep", this,
               SLOT(prepareForSleep(QDBusMessage)));
    m_bus.hook(logind, logindObject, logindManager, "PrepareForShutdown", this,
               SLOT(prepareForShutdown(QDBusMessage)));
    m_sleepInhibitor.take(logind);
    m_shutdownInhibitor.take(logind);
    askWhetherPreparing("PreparingForSleep", &LogindPower::setSleeping);
    askWhetherPreparing("PreparingForShutdown", &LogindPower::setShuttingDown);
}

void LogindPower::noticeUser() {
    setSleeping(false);
}

void LogindPower::release() {
    if (m_isSleeping)
        m_sleepInhibitor.release();
    if (m_isShuttingDown)
        m_shutdownInhibitor.release();
}

void LogindPower::prepareForSleep(const QDBusMessage& signal) {
    if (const auto begins = booleanOf(signal.arguments().value(0)))
        setSleeping(*begins);
}

void LogindPower::prepareForShutdown(const QDBusMessage& signal) {
    if (const auto begins = booleanOf(signal.arguments().value(0)))
        setShuttingDown(*begins);
}

void LogindPower::askWhetherPreparing(const char* property, void (LogindPower::*set)(bool)) {
    const QDBusMessage call = propertyCall(m_logind, logindObject, logindManager, QLatin1String(property));
    m_bus.ask(call, *m_asker, [this, set](const QDBusMessage& answer) {
        const auto isPreparing = booleanOf(answer.arguments().value(0).value<QDBusVariant>().variant());
        if (!isPreparing)
            return;
        m_checksWithoutAnswer = 0;
        (this->*set)(*isPreparing);
    });
}

// Both values may come twice, and the second one not at all. What is held up again is not waited for.
void LogindPower::setSleeping(bool isSleeping) {
    if (std::exchange(m_isSleeping, isSleeping) == isSleeping)
        return;
    m_checksWithoutAnswer = 0;
    if (isSleeping)
        m_check.start();
    else
        m_check.stop();
    if (!isSleeping)
        takeAgain(m_sleepInhibitor);
    emit sleepChanged(isSleeping);
}

void LogindPower::setShuttingDown(bool isShuttingDown) {
    if (std::exchange(m_isShuttingDown, isShuttingDown) == isShuttingDown)
        return;
    if (isShuttingDown)
        emit shutdownBegan();
    else
        takeAgain(m_shutdownInhibitor);
}

void LogindPower::takeAgain(DelayInhibitor& inhibitor) {
    if (!inhibitor.isHeld() && !m_logind.isEmpty())
        inhibitor.take(m_logind);
}

void LogindPower::checkForWake() {
    if (++m_checksWithoutAnswer <= checksWithoutAnswerLimit) {
        if (!m_logind.isEmpty())
            askWhetherPreparing("PreparingForSleep", &LogindPower::setSleeping);
        return;
    }
    logLine("logind tells no longer whether the system sleeps: it is taken to be awake.");
    setSleeping(false);
}

} // namespace veilkeep
