#include "platform/linux/checkup/Checkup.h"

#include "core/log/Log.h"
#include "platform/linux/checkup/DataCheckup.h"
#include "platform/linux/checkup/ProgramCheckup.h"
#include "platform/linux/filemanagers/LinuxFileManagerMenu.h"

#include <utility>

namespace veilkeep {

CheckupFacts lookAtDesktop(const std::string& ownVersion, const BusCheckupLimits& limits) {
    Log::keepSharedEmpty();
    CheckupFacts facts;
    facts.surroundings = lookAtSurroundings();
    BusesFacts buses = askBuses(limits);
    facts.sessionBus = std::move(buses.session);
    facts.systemBus = std::move(buses.system);
    facts.data = lookAtData();
    facts.autoHide = lookAtAutoHide(facts.data);
    facts.program = lookAtProgram(ownVersion);
    facts.rights = lookAtRights(facts.program.bundle);
    for (const auto& entry :
         LinuxFileManagerMenu({facts.program.bundle, facts.program.bundleVersion}).entries())
        facts.menuEntries.push_back({entry.manager, entry.path, entry.state});
    return facts;
}

} // namespace veilkeep
