#pragma once

#include <string>

namespace veilkeep {

// Has cloakTraces clean what other programs remember of an item that was hidden just now, in a process that
// nobody waits for; only when there may be something and the environment does not say otherwise:
// VEILKEEP_CLEAN_RECENT_ITEMS=0 is the user's "no", VEILKEEP_NOBODY_THERE=1 leaves it to a later cloakTraces.
// What goes wrong goes to the log.
void haveTracesCleaned(const std::string& visiblePath, const std::string& hiddenPath);

} // namespace veilkeep
