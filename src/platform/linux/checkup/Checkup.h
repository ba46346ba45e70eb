#pragma once

#include "platform/linux/checkup/BusCheckup.h"
#include "platform/linux/checkup/CheckupFacts.h"
#include "platform/linux/checkup/Finding.h"

#include <string>
#include <vector>

namespace veilkeep {

// Looks at all that Veilkeep needs of the desktop: within the limits, without changing anything on the disk,
// and without starting a service. Main thread.
CheckupFacts lookAtDesktop(const std::string& ownVersion, const BusCheckupLimits& limits = {});

// What the facts mean, in the order in which they are told.
std::vector<CheckupFinding> findingsFrom(const CheckupFacts& facts);

} // namespace veilkeep
