#pragma once

#include "core/base/Result.h"
#include "core/base/UniqueFd.h"

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// Makes the directory and every missing one above it, each with the mode (the umask takes its bits away) and
// each entered durably into the directory that holds it. One that is there already, or a link to one, stays
// as it is; anything else at its place is ENOTDIR.
Result<void> makeDirectories(const std::string& path, mode_t mode);

// open() for a directory whose path may be longer than the system takes in one piece. The path is absolute
// and links are followed. Without a descriptor errno says why.
UniqueFd openDirectoryInPieces(std::string_view path, int flags);

// A descriptor that names the directory at the absolute path (O_PATH), however long the path is; no component
// of it may be a link. Without one errno says why.
UniqueFd openDirectoryWithoutLinks(std::string_view path);

// What is in the directory, but "." and "..", in no order; nothing where it cannot be read.
std::vector<std::string> entryNamesIn(const std::string& directory);

// Makes what was created, renamed or removed in a directory survive a power cut. A file system that does not
// know how to sync a directory (EINVAL) counts as having done it.
Result<void> syncDirectory(const std::string& path);
Result<void> syncDirectory(int directory, const std::string& path); // the path only names it in an error

} // namespace veilkeep
