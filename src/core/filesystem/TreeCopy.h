#pragma once

#include "core/base/Result.h"

#include <string>

namespace veilkeep {

// Copies a file or a directory with all below it to a place where nothing is yet, and syncs every bit of it
// but the directory that the copy lies in. Links are followed, so that the copy stands by itself. What is
// neither a file nor a directory is NotAFile. After an error a part of the copy may be there.
Result<void> copyTree(const std::string& from, const std::string& to);

// The item and all below it, no link followed. Nothing there is no error.
Result<void> removeTree(const std::string& path);

} // namespace veilkeep
