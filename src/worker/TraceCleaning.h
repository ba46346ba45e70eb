#pragma once

#include "core/protocol/WorkerAnswer.h"

#include <string>

namespace veilkeep {

// Has cloakTraces clean what other programs remember of an item that was hidden just now, in a process that
// nobody waits for; only when there may be something and the environment does not say otherwise:
// VEILKEEP_CLEAN_RECENT_ITEMS is the user's decision, 1 or 0. Where he has not decided yet and may be asked,
// the answer is waited for, and told; with VEILKEEP_NOBODY_THERE=1 nothing is cleaned then. What goes wrong
// goes to the log.
RecentsAnswer haveTracesCleaned(const std::string& visiblePath, const std::string& hiddenPath, bool mayAsk);

bool cleaningIsAskedFor(); // the user has decided so

} // namespace veilkeep
