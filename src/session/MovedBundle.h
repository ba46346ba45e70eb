#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// Puts one bundle in another's place. What was there is moved aside to "Veilkeep.old.app" in the same folder,
// and removed once the new one is in place. Nothing is ever lost: after an error the former one is where it
// was, and the source where it came from. A source that shares anything with either place is refused. The
// answer is whether there was one aside and it is gone.
[[nodiscard]] Result<bool> moveToPath(const std::string& path, const std::string& fromPath);

} // namespace veilkeep
