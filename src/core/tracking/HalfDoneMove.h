#pragma once

#include "core/base/Result.h"

#include <chrono>
#include <string>

namespace veilkeep {

// Where the file system cannot rename without replacing, cloakWorker moves an item in two steps under a lock
// on ".SYS_INDEX". Cut off between them it leaves the item under both its names, or a placeholder at the new
// one. This takes the name away that is not the kept path's, if it is such a leftover and the kept path holds
// the item; true when it did. The path is absolute, in its visible or its hidden form. Looks at one path only
// where there is no leftover; any thread.
// EWOULDBLOCK: others held the lock for longer than the wait.
Result<bool> healHalfDoneMove(const std::string& keptPath,
                              std::chrono::milliseconds wait = std::chrono::seconds(2));

} // namespace veilkeep
