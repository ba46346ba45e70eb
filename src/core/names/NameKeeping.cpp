#include "core/names/NameKeeping.h"

#include "core/base/CHandles.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/names/HiddenName.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>

#include <algorithm>
#include <cstdint>

namespace veilkeep {
namespace {

struct statfs fileSystemOf(int directory) {
    struct statfs status = {};
    if (retryOnInterrupt([&] { return ::fstatfs(directory, &status); }) != 0)
        return {};
    return status;
}

bool isListed(const Place& place) {
    UniqueFd fd(
        retryOnInterrupt([&] { return ::openat(place.directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!fd)
        return true; // nothing speaks against it
    const DirectoryStream listing(::fdopendir(fd.get()));
    if (!listing)
        return true;
    fd.release();
    while (const dirent* entry = ::readdir(listing.get()))
        if (place.name == entry->d_name)
            return true;
    return false;
}

} // namespace

bool isWellKnownFileSystem(int directory) {
    constexpr std::uint64_t xfs = 0x58465342; // not in linux/magic.h of every system
    switch (static_cast<std::uint64_t>(fileSystemOf(directory).f_type)) {
    case EXT4_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case xfs:
        return true;
    default:
        return false;
    }
}

std::size_t longestNameIn(int directory) {
    const auto limit = static_cast<std::size_t>(fileSystemOf(directory).f_namelen);
    return limit == 0 ? longestFileName : std::min(longestFileName, limit);
}

bool keepsName(const Place& place) {
    const bool endsOddly = place.name.ends_with('.') || place.name.ends_with(' ');
    return !endsOddly || isWellKnownFileSystem(place.directory) || isListed(place);
}

} // namespace veilkeep
