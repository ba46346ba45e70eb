#include "platform/linux/checkup/SystemBusCheckup.h"

#include "core/protocol/SecurityController.h"
#include "platform/linux/LogindCalls.h"
#include "platform/linux/PolkitTypes.h"

#include <QCoreApplication>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>

#include <utility>

namespace veilkeep {

struct SystemBusCheckup::Service {
    QLatin1String name;
    ServiceState& state;
};

QList<SystemBusCheckup::Service> SystemBusCheckup::services(SystemBusFacts& facts) {
    return {{logindService, facts.logind.service},
            {QLatin1String("org.freedesktop.PolicyKit1"), facts.polkit.service},
            {QLatin1String("org.freedesktop.UDisks2"), facts.udisks},
            {QLatin1String("org.freedesktop.PackageKit"), facts.packageKit}};
}

SystemBusCheckup::SystemBusCheckup() : BusQuestions(BusLink::Bus::System) {
    registerPolkitTypes();
    connect(&m_session, &LogindSession::searched, this, &SystemBusCheckup::takeSession);
}

void SystemBusCheckup::begin(SystemBusFacts& facts) {
    m_facts = &facts;
    start([this] {
        askForNames("ListNames", [this](const QStringList& names) { takeNames(names); });
        askForNames("ListActivatableNames", [this](const QStringList& names) { takeStartable(names); });
    });
}

void SystemBusCheckup::takeNames(const QStringList& names) {
    m_facts->areNamesTold = true;
    for (const Service& service : services(*m_facts))
        if (names.contains(service.name))
            service.state = ServiceState::Running;
    if (m_facts->logind.service == ServiceState::Running)
        askLogind();
    if (m_facts->polkit.service == ServiceState::Running)
        askPolkit();
}

void SystemBusCheckup::takeStartable(const QStringList& names) {
    for (const Service& service : services(*m_facts))
        if (service.state == ServiceState::Absent && names.contains(service.name))
            service.state = ServiceState::Startable;
}

void SystemBusCheckup::askLogind() {
    askToHoldSleep();
    askBus("GetNameOwner", {QString(logindService)}, [this](const QDBusMessage& answer) {
        const QString logind = answeredValue(answer, "s").toString();
        if (logind.isEmpty())
            return;
        hold(); // until the search is over
        m_session.talkTo(logind);
    });
}

// Taken for a moment, since only that tells whether it is granted.
void SystemBusCheckup::askToHoldSleep() {
    QDBusMessage call = logindManagerCall(logindService, QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep") << QCoreApplication::applicationName()
         << QStringLiteral("A look at whether it can be held up") << QStringLiteral("delay");
    ask(call, [this](const QDBusMessage& answer) {
        LogindFacts& logind = m_facts->logind;
        if (answer.type() == QDBusMessage::ErrorMessage)
            logind.whyNot = answer.errorMessage();
        if (answer.type() == QDBusMessage::ErrorMessage || answeredValue(answer, "h").isValid())
            logind.canHoldSleep = answer.type() == QDBusMessage::ReplyMessage;
    });
}

void SystemBusCheckup::takeSession(const QString& path) {
    if (m_facts->logind.isSessionFound)
        return; // sessions come and go, and the search with them
    m_facts->logind.isSessionFound = !path.isEmpty();
    if (!path.isEmpty())
        ask(propertyCall(logindService, path, logindSession, QStringLiteral("LockedHint")),
            [this](const QDBusMessage& answer) {
                const QVariant hint = answeredValue(answer, "v").value<QDBusVariant>().variant();
                m_facts->logind.isLockTold = hint.typeId() == QMetaType::Bool;
            });
    letGo();
}

void SystemBusCheckup::askPolkit() {
    constexpr uint withoutQuestion = 0;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.PolicyKit1"), QStringLiteral("/org/freedesktop/PolicyKit1/Authority"),
        QStringLiteral("org.freedesktop.PolicyKit1.Authority"), QStringLiteral("CheckAuthorization"));
    call << QVariant::fromValue(PolkitSubject::thisProcess())
         << QString::fromStdString(SecurityController::moveAction) << QVariant::fromValue(PolkitDetails())
         << withoutQuestion << QString();
    ask(call, [this](const QDBusMessage& answer) {
        using Answer = PolkitFacts::Answer;
        Answer& told = m_facts->polkit.answer;
        if (answer.errorMessage().contains(QLatin1String("is not registered")))
            told = Answer::UnknownAction;
        const QVariant value = answeredValue(answer, "(bba{ss})");
        if (!value.isValid())
            return;
        const auto result = qdbus_cast<PolkitResult>(value);
        told = result.isChallenge ? Answer::AfterQuestion : Answer::Refused;
        if (result.isAuthorized)
            told = Answer::Granted;
    });
}

} // namespace veilkeep
