#pragma once

#include "core/base/Result.h"

#include <functional>

namespace veilkeep {

// Copies what an open file holds into an empty one, leaving its holes holes, so that a disk image takes no
// more room than before. The function is asked now and then whether to go on; else the error is ECANCELED.
// Errors say "read" or "write" and no path.
Result<void> copyContent(int from, int to, const std::function<bool()>& goesOn);

} // namespace veilkeep
