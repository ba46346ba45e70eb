#pragma once

#include "core/records/Value.h"

#include <cstdint>
#include <limits>
#include <string>

namespace veilkeep {

// Stands for a size that is not known: directories are never summed.
inline constexpr std::uint64_t unknownFileSize = std::numeric_limits<std::uint64_t>::max();

// Whether a directory lies at the path, links followed; false for what cannot be looked at.
bool isDirectoryAtPath(const std::string& path);

// The item's own size in bytes (of a link to a file, the link's). 0 where nothing is to be seen at the path,
// links followed; unknownFileSize for a directory and for a link to one.
std::uint64_t fileSizeAtPath(const std::string& path);
Value fileSizeNumberAtPath(const std::string& path);

} // namespace veilkeep
