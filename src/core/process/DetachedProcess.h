#pragma once

#include "core/base/Result.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace veilkeep {

// Starts a program that nobody waits for, and that holds nothing which somebody may wait for: no descriptor
// of this process, no working directory, no terminal. The system reaps it after this process has ended. The
// answer is its number.
[[nodiscard]] Result<pid_t> startDetachedProcess(const std::string& program,
                                                 const std::vector<std::string>& arguments);

} // namespace veilkeep
