#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// Puts a directory with all below it in the place of what lies at the path, if anything does, on the same
// volume. By one step where the file system has one; else the former one is away for a moment. It goes aside,
// beside the path, where whatever an earlier run left is removed before, and is removed there once the new
// one is in place. After an error both are where they were. The answer is whether there was a former one and
// it is gone.
[[nodiscard]] Result<bool> replaceTree(const std::string& path, const std::string& newTree,
                                       const std::string& aside);

} // namespace veilkeep
