#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// Whether a program may be run with administrator rights: a regular file that root owns, in folders that root
// owns up to "/", none of them a link or writable by group or others. Nobody but root can then put another
// program in its place; a sticky folder does not count as closed, for others may still add to it. The error
// names the part that is at fault.
Result<void> checkTrustedProgram(const std::string& path);

} // namespace veilkeep
