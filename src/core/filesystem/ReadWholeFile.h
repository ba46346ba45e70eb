#pragma once

#include "core/base/Result.h"
#include "core/filesystem/FileStamp.h"

#include <cstddef>
#include <string>

namespace veilkeep {

// All bytes of a regular file, links followed. More than maximumSize bytes are TooLarge; anything but a
// regular file is NotAFile and never waited for. Into stamp goes what the file was before the first
// byte was read.
Result<std::string> readWholeFile(const std::string& path, std::size_t maximumSize,
                                  FileStamp* stamp = nullptr);

} // namespace veilkeep
