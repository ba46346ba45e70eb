#pragma once

#include "core/base/Result.h"

#include <chrono>
#include <string>

namespace veilkeep {

// Takes the exclusive flock of an open file, looking again every few milliseconds until the wait is over
// (EWOULDBLOCK then). The lock ends when the last descriptor of that open file is closed. The path only names
// it in an error.
Result<void> lockExclusively(int file, const std::string& path, std::chrono::milliseconds wait);

} // namespace veilkeep
