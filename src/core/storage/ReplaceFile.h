#pragma once

#include "core/base/Result.h"

#include <string>
#include <string_view>

namespace veilkeep {

// Puts a new file of mode 0600 with these bytes at the path, or leaves what is there as it is: a temporary
// file (".veilkeep-" and random digits) beside the target is written, synced and renamed over it, then the
// directory is synced. NotDurable: the new file is in place, only the directory could not be synced. No error
// leaves the temporary file behind; each call uses a new one.
// Links at the target's place are followed, so root must not call this where another user may set links.
Result<void> replaceFile(const std::string& path, std::string_view bytes);

// The place that replaceFile writes: the path, or where the links at it lead, even when nothing is there.
// What exists there and is not a regular file is NotAFile.
Result<std::string> replaceTarget(const std::string& path);

} // namespace veilkeep
