#include "core/filesystem/Place.h"

#include "core/base/SystemCall.h"

#include <fcntl.h>

namespace veilkeep {

std::optional<struct stat> statusOf(const Place& place) {
    struct stat status = {};
    const int looked = retryOnInterrupt(
        [&] { return ::fstatat(place.directory, place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW); });
    return looked == 0 ? std::optional(status) : std::nullopt;
}

bool isSameItem(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino &&
           (one.st_mode & S_IFMT) == (other.st_mode & S_IFMT);
}

} // namespace veilkeep
