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

} // namespace veilkeep
