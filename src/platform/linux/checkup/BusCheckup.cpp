#include "platform/linux/checkup/BusCheckup.h"

#include "platform/linux/checkup/BusHello.h"
#include "platform/linux/checkup/SessionBusCheckup.h"
#include "platform/linux/checkup/SystemBusCheckup.h"

#include <QEventLoop>
#include <QTimer>

namespace veilkeep {
namespace {

BusReach reachOf(BusLink::Bus bus, const BusCheckupLimits& limits) {
    return sayHelloTo(BusLink::addressOf(bus), limits.hello);
}

} // namespace

BusesFacts askBuses(const BusCheckupLimits& limits) {
    BusesFacts facts;
    SessionBusCheckup session;
    SystemBusCheckup system;
    facts.session.reach = reachOf(BusLink::Bus::Session, limits);
    facts.system.reach = reachOf(BusLink::Bus::System, limits);

    QEventLoop loop;
    QTimer::singleShot(limits.answers, &loop, &QEventLoop::quit);
    const bool asksSession = facts.session.reach == BusReach::Reached;
    const bool asksSystem = facts.system.reach == BusReach::Reached;
    const auto endWhenBothAreOver = [&] {
        if ((!asksSession || session.isOver()) && (!asksSystem || system.isOver()))
            loop.quit();
    };
    QObject::connect(&session, &BusQuestions::over, &loop, endWhenBothAreOver);
    QObject::connect(&system, &BusQuestions::over, &loop, endWhenBothAreOver);
    if (asksSession)
        session.begin(facts.session);
    if (asksSystem)
        system.begin(facts.system);
    if (asksSession || asksSystem)
        loop.exec();
    return facts;
}

} // namespace veilkeep
