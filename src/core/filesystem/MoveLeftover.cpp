#include "core/filesystem/MoveLeftover.h"

#include "core/base/SystemCall.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace veilkeep {
namespace {

// A bind mount can show a directory inside itself, and then two paths are one name.
bool areTwoDirectories(int one, int other) {
    struct stat first = {}, second = {};
    const auto look = [](int directory, struct stat& status) {
        return retryOnInterrupt([&] { return ::fstat(directory, &status); }) == 0;
    };
    return look(one, first) && look(other, second) && !isSameItem(first, second);
}

// The number of links rules out file systems that give one inode number to several files.
bool areTwoNames(const Place& one, const struct stat& item, const Place& other,
                 const struct stat& otherItem) {
    return isSameItem(item, otherItem) && !S_ISDIR(item.st_mode) && item.st_nlink > 1 &&
           areTwoDirectories(one.directory, other.directory);
}

// Some file systems set mode or owner in a second step. An item that was moved there was changed then.
bool isAsItWasMade(const struct stat& status) {
    return std::abs(status.st_ctim.tv_sec - status.st_mtim.tv_sec) <= 1;
}

} // namespace

bool isPlaceholder(const struct stat& status) {
    // The set-group-ID bit comes from the directory that holds it.
    const bool isClosed = (status.st_mode & (S_ISUID | S_ISVTX | 0777)) == 0;
    const bool isEmptyFile = S_ISREG(status.st_mode) && status.st_size == 0 && status.st_nlink == 1;
    return isClosed && (isEmptyFile || S_ISDIR(status.st_mode)) && isAsItWasMade(status);
}

bool isPlaceholderAt(const std::string& path) {
    const auto status = statusOf({AT_FDCWD, path});
    return status && isPlaceholder(*status);
}

MoveLeftover leftoverAt(const Place& other, const Place& kept) {
    const auto left = statusOf(other);
    const auto item = left ? statusOf(kept) : std::nullopt;
    if (!item || isPlaceholder(*item))
        return MoveLeftover::None;
    if (areTwoNames(kept, *item, other, *left))
        return MoveLeftover::SecondName;
    if (!isPlaceholder(*left))
        return MoveLeftover::None;
    return S_ISDIR(left->st_mode) ? MoveLeftover::PlaceholderDirectory : MoveLeftover::PlaceholderFile;
}

int removeLeftover(const Place& place, MoveLeftover leftover) {
    if (leftover == MoveLeftover::None)
        return 0;
    const int flags = leftover == MoveLeftover::PlaceholderDirectory ? AT_REMOVEDIR : 0;
    const int removed =
        retryOnInterrupt([&] { return ::unlinkat(place.directory, place.name.c_str(), flags); });
    return removed == 0 || errno == ENOENT ? 0 : errno;
}

} // namespace veilkeep
