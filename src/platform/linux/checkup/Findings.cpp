#include "platform/linux/checkup/Findings.h"

#include "platform/linux/checkup/Checkup.h"

#include <algorithm>

namespace veilkeep {

std::vector<CheckupFinding> findingsFrom(const CheckupFacts& facts) {
    constexpr CheckupFinding (*findings[])(const CheckupFacts&) = {
        surroundingsFinding, sessionBusFinding,   trayFinding,   logindFinding, sleepFinding, lockFinding,
        autoHideFinding,     rightsFinding,       agentFinding,  disksFinding,  dataFinding,  settingsFinding,
        programFinding,      fileManagersFinding, windowFinding, updatesFinding};
    std::vector<CheckupFinding> found;
    for (const auto finding : findings)
        found.push_back(finding(facts));
    return found;
}

bool isDesktop(const CheckupFacts& facts, std::initializer_list<const char*> names) {
    return std::ranges::any_of(facts.surroundings.desktops, [&](const std::string& desktop) {
        return std::ranges::any_of(names, [&](const char* name) { return desktop == name; });
    });
}

bool isSystemBusAtFault(const CheckupFacts& facts, const QString& without, CheckupFinding& finding) {
    switch (facts.systemBus.reach) {
    case BusReach::Reached:
        if (facts.systemBus.areNamesTold)
            return false;
        finding.status = CheckupFinding::Status::Limited;
        finding.meaning = "The system bus did not say in time who is on it.";
        break;
    case BusReach::Missing:
        finding.meaning = "The system bus cannot be reached: " + without;
        finding.packages = {"dbus"};
        break;
    case BusReach::NotAnswered:
        finding.meaning = "The system bus does not answer, or does not let this user in: " + without;
        break;
    case BusReach::Elsewhere:
        finding.status = CheckupFinding::Status::Limited;
        finding.meaning = "The system bus is no socket of this machine, and was not asked.";
        break;
    }
    return true;
}

} // namespace veilkeep
