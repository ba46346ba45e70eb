#include "worker/ExclusiveRename.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/FileLock.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/names/NameKeeping.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

namespace veilkeep {
namespace {

bool holds(const Place& place, const struct stat& item) {
    const auto status = statusOf(place);
    return status && isSameItem(*status, item);
}

int plainRename(const Place& from, const Place& to) {
    const int answer = retryOnInterrupt(
        [&] { return ::renameat(from.directory, from.name.c_str(), to.directory, to.name.c_str()); });
    return answer == 0 ? 0 : errno;
}

void removeName(const Place& place, int flags) {
    // What is left when this fails is a second name or an empty placeholder, both known for what they are
    // when the item is looked for.
    retryOnInterrupt([&] { return ::unlinkat(place.directory, place.name.c_str(), flags); });
}

// Whether a placeholder goes where its file system does not show it as one.
enum class Unmarked { Goes, Refused };

// Renames over an empty file made for it. Whoever put something else there meanwhile keeps it. EOPNOTSUPP: a
// placeholder cannot be told from a file here.
int renameOverPlaceholderFile(const Place& from, const Place& to, Unmarked unmarked = Unmarked::Goes) {
    UniqueFd placeholder(retryOnInterrupt([&] {
        return ::openat(to.directory, to.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        0);
    }));
    if (!placeholder)
        return errno;
    struct stat made = {};
    const auto look = [&] { return retryOnInterrupt([&] { return ::fstat(placeholder.get(), &made); }); };
    if (look() != 0) {
        const int error = errno;
        if (look() == 0 && holds(to, made))
            removeName(to, 0);
        return error;
    }
    placeholder.reset();
    // 0, or why the item must not be renamed over what is there.
    const auto change = [&] {
        const auto now = statusOf(to);
        if (!now && errno != ENOENT)
            return errno;
        return now && isSameItem(*now, made) && now->st_size == 0 ? 0 : EEXIST;
    };
    int error = unmarked == Unmarked::Refused && !isPlaceholder(made) ? EOPNOTSUPP : change();
    if (error == 0)
        error = plainRename(from, to);
    if (error != 0 && change() == 0)
        removeName(to, 0);
    return error;
}

int renameOverPlaceholderDirectory(const Place& from, const Place& to) {
    if (retryOnInterrupt([&] { return ::mkdirat(to.directory, to.name.c_str(), 0); }) != 0)
        return errno;
    const int error = plainRename(from, to); // replaces an empty directory only
    if (error != 0)
        removeName(to, AT_REMOVEDIR);
    return error;
}

bool linksAreRefused(int error) {
    return error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK || error == EINVAL;
}

// As far as marks can tell that the names of one file share, whatever its number under each.
bool mayBeTwoNames(const struct stat& one, const struct stat& other) {
    return one.st_mode == other.st_mode && one.st_size == other.st_size &&
           one.st_mtim.tv_sec == other.st_mtim.tv_sec && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

// Gives the item its second name, then takes the first away, unless somebody put another item there
// meanwhile.
int linkAndUnlink(const Place& from, const Place& to, const struct stat& item) {
    const int linked = retryOnInterrupt(
        [&] { return ::linkat(from.directory, from.name.c_str(), to.directory, to.name.c_str(), 0); });
    if (linked != 0)
        return linksAreRefused(errno) ? renameOverPlaceholderFile(from, to) : errno;
    if (const auto linkedItem = statusOf(to); !linkedItem || !isSameItem(*linkedItem, item)) {
        // Either another item took the first name just before, or this file system (a remote one) shows each
        // name of a file under a number of its own, and links cannot be told from other files. Or somebody
        // put something of his own in the link's place, which stays.
        const auto first = statusOf(from);
        if (linkedItem && !(first && mayBeTwoNames(*first, *linkedItem)))
            return EEXIST;
        removeName(to, 0);
        return first && isSameItem(*first, item) ? renameOverPlaceholderFile(from, to) : ENOENT;
    }
    const auto first = statusOf(from);
    if (first ? !isSameItem(*first, item) : errno == ENOENT)
        return 0;
    if (first && retryOnInterrupt([&] { return ::unlinkat(from.directory, from.name.c_str(), 0); }) == 0)
        return 0;
    const int error = errno;
    if (error == ENOENT)
        return 0;
    if (holds(from, item)) // else the second name might be the only one
        removeName(to, 0);
    return error;
}

// Locked until destroyed; no descriptor and errno where that fails.
UniqueFd lockDirectory(int directory) {
    constexpr std::chrono::seconds patience(10);
    UniqueFd lock(
        retryOnInterrupt([&] { return ::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!lock)
        return lock;
    if (const auto locked = lockExclusively(lock.get(), {}, patience); !locked) {
        lock.reset();
        errno = locked.error().systemError;
    }
    return lock;
}

// The visible name is open to all programs: what one saves over it between the steps must not be unlinked for
// the item. Nobody but movers uses the hidden name, so the item is renamed to it, and linked to the visible.
int moveFileInSteps(const Place& from, const Place& to, const struct stat& item, bool hides) {
    const int error = hides ? renameOverPlaceholderFile(from, to, Unmarked::Refused) : EOPNOTSUPP;
    const bool mayBeLinked = error == EOPNOTSUPP || error == ENOSPC || error == EDQUOT;
    return mayBeLinked ? linkAndUnlink(from, to, item) : error;
}

// Under the lock no other mover is between its steps: what looks like a leftover is one.
int moveInSteps(const Place& from, const Place& to, const struct stat& item, bool hides) {
    if (leftoverAt(from, to) == MoveLeftover::SecondName)
        return removeLeftover(from, MoveLeftover::SecondName);
    if (removeLeftover(to, leftoverAt(to, from)) != 0)
        return EEXIST;
    return S_ISDIR(item.st_mode) ? renameOverPlaceholderDirectory(from, to)
                                 : moveFileInSteps(from, to, item, hides);
}

int lockAndMoveInSteps(const Place& from, const Place& to, int hiddenDirectory) {
    const UniqueFd lock = lockDirectory(hiddenDirectory);
    if (!lock)
        return errno;
    const auto item = statusOf(from);
    return item ? moveInSteps(from, to, *item, to.directory == hiddenDirectory) : errno;
}

// What is in the way is told first, before a file system is asked whether it can rename without replacing.
bool isInTheWayOfSteps(MoveLeftover leftover, int directory) {
    switch (leftover) {
    case MoveLeftover::None:
        return false;
    case MoveLeftover::SecondName: // between two names of one item no rename does anything
        return true;
    case MoveLeftover::PlaceholderFile:
    case MoveLeftover::PlaceholderDirectory:
        return !isWellKnownFileSystem(directory);
    }
    return false;
}

bool needsSteps(int error, const Place& from, const Place& to) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
           (error == EEXIST && isInTheWayOfSteps(leftoverAt(to, from), to.directory));
}

} // namespace

int renameExclusively(const Place& from, const Place& to, int hiddenDirectory) {
    const auto item = statusOf(from);
    if (!item)
        return errno;
    const int answer = retryOnInterrupt([&] {
        return ::renameat2(from.directory, from.name.c_str(), to.directory, to.name.c_str(),
                           RENAME_NOREPLACE);
    });
    if (answer == 0)
        return 0;
    int error = errno;
    if (needsSteps(error, from, to))
        error = lockAndMoveInSteps(from, to, hiddenDirectory);
    // Another mover was quicker, or a request that was sent twice (an interrupted one, a network file system)
    // fails though it was done.
    if ((error == ENOENT || error == EEXIST) && !statusOf(from) && holds(to, *item))
        return 0;
    return error;
}

} // namespace veilkeep
