#include "worker/ItemDirectories.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/AccessList.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/SharedDirectories.h"
#include "core/names/HiddenName.h"
#include "worker/FileAccessAs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <mutex>

namespace veilkeep {
namespace {

constexpr int directoryFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

const std::string& hiddenName() {
    static const std::string name(hiddenDirectoryName);
    return name;
}

bool look(int directory, struct stat& status) {
    return retryOnInterrupt([&] { return ::fstat(directory, &status); }) == 0;
}

// The group of what this process makes there is its own, unless the directory or the system says otherwise.
bool givesAnotherGroup(const struct stat& parent) {
    return ::geteuid() != 0 && (parent.st_mode & S_ISGID) == 0 && parent.st_gid != ::getegid();
}

// The umask is all threads' own. Answers 0 or errno.
int makeWithMode(int parent, mode_t mode) {
    static std::mutex oneAtATime;
    const std::lock_guard guard(oneAtATime);
    const mode_t before = ::umask(0);
    const int made = retryOnInterrupt([&] { return ::mkdirat(parent, hiddenName().c_str(), mode); });
    const int error = made == 0 ? 0 : errno;
    ::umask(before);
    return error;
}

// The parent's group, and only with it that group's rights. Where the maker is not in that group, it stays as
// made.
void takeGroupOfParent(int parent, gid_t group, mode_t mode) {
    constexpr uid_t unchangedOwner = ~uid_t{0};
    const UniqueFd made(retryOnInterrupt([&] {
        return ::openat(parent, hiddenName().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }));
    if (made && ::fchown(made.get(), unchangedOwner, group) == 0) [[maybe_unused]]
        const int moded = ::fchmod(made.get(), mode);
}

// For everybody who may use its parent: with its mode, and as root with its owner. Both from the first
// moment, since what has the name a moment later may be something else. Answers 0 or errno.
int makeHiddenDirectory(int parent) {
    struct stat status = {};
    if (!look(parent, status))
        return errno;
    constexpr mode_t rightsOfGroup = S_IRWXG;
    const bool anotherGroup = givesAnotherGroup(status);
    const mode_t mode =
        07777 & (givesAccessList(parent) ? status.st_mode : modeWithoutAccessList(parent, status.st_mode));
    const mode_t firstMode = anotherGroup ? mode & (~rightsOfGroup | (mode & S_IRWXO) << 3) : mode;
    int error = 0;
    {
        const FileAccessAs owner(status.st_uid, status.st_gid, FileAccessAs::Rights::StillRoots);
        error = makeWithMode(parent, firstMode);
    }
    if (error == 0 && anotherGroup)
        takeGroupOfParent(parent, status.st_gid, mode);
    return error;
}

// Whether administrator rights may be used in it: only those who could do in the parent what they like own it
// or write to it, and nothing can be brought out of it that root keeps from others. 0 or errno.
int distrust(int hidden, int parent, const User& askedBy) {
    struct stat own = {}, above = {};
    if (!look(hidden, own) || !look(parent, above))
        return errno;
    constexpr mode_t open = S_IROTH | S_IXOTH;
    const bool roots = own.st_uid == 0 && (own.st_mode & open) == open;
    const bool ownedWell = roots || own.st_uid == above.st_uid || own.st_uid == askedBy.id;
    return ownedWell && !isOpenToMoreThan(hidden, parent) ? 0 : ENOTDIR;
}

// In a sticky directory nobody but its owner can take away what belongs to another. In a ".SYS_INDEX" that
// any other user has made there, or made sticky no more, he could. 0 or errno.
int losesProtection(int hidden, int parent) {
    struct stat own = {}, above = {};
    if (!look(hidden, own) || !look(parent, above))
        return errno;
    const bool isStrangers = own.st_uid != 0 && own.st_uid != above.st_uid && own.st_uid != ::geteuid();
    const bool isOpen = (own.st_mode & (S_IWGRP | S_IWOTH)) != 0 && (own.st_mode & S_ISVTX) == 0;
    return (above.st_mode & S_ISVTX) != 0 && (isStrangers || isOpen) ? ENOTDIR : 0;
}

// Nothing can be moved out of it, and a ".SYS_INDEX" made in it could not be taken away again.
bool takesNewEntriesOnly(int directory) {
    struct statx status = {};
    const int flags = AT_EMPTY_PATH | AT_STATX_DONT_SYNC;
    return retryOnInterrupt([&] { return ::statx(directory, "", flags, 0, &status); }) == 0 &&
           (status.stx_attributes & STATX_ATTR_APPEND) != 0;
}

} // namespace

UniqueFd openDirectory(std::string_view path) {
    return ::geteuid() == 0 ? openDirectoryWithoutLinks(path) : openDirectoryInPieces(path, directoryFlags);
}

HiddenDirectory openHiddenDirectory(int parent, const User* askedBy) {
    HiddenDirectory hidden;
    hidden.fd.reset(retryOnInterrupt(
        [&] { return ::openat(parent, hiddenName().c_str(), directoryFlags | O_NOFOLLOW); }));
    hidden.error = hidden.fd ? 0 : errno;
    if (hidden.fd && askedBy)
        hidden.error = distrust(hidden.fd.get(), parent, *askedBy);
    return hidden;
}

bool isHiddenDirectory(int directory) {
    struct stat own = {}, hidden = {};
    const std::string path = "../" + hiddenName();
    const int flags = AT_SYMLINK_NOFOLLOW;
    return look(directory, own) &&
           retryOnInterrupt([&] { return ::fstatat(directory, path.c_str(), &hidden, flags); }) == 0 &&
           own.st_dev == hidden.st_dev && own.st_ino == hidden.st_ino;
}

HiddenDirectory openOrMakeHiddenDirectory(int parent, const User* askedBy) {
    HiddenDirectory hidden = openHiddenDirectory(parent, askedBy);
    if (hidden.error == 0 && !askedBy)
        hidden.error = losesProtection(hidden.fd.get(), parent);
    if (hidden.error != ENOENT)
        return hidden;
    const int error = takesNewEntriesOnly(parent) ? EPERM : makeHiddenDirectory(parent);
    if (error != 0 && error != EEXIST) { // EEXIST: another worker was quicker
        hidden.error = error;
        return hidden;
    }
    hidden = openHiddenDirectory(parent, askedBy);
    hidden.made = error == 0;
    if (hidden.error == 0 && !askedBy)
        hidden.error = losesProtection(hidden.fd.get(), parent);
    return hidden;
}

void removeHiddenDirectoryIfEmpty(int parent) {
    // Refused while anything lies in it; an empty one that may not be removed does no harm.
    retryOnInterrupt([&] { return ::unlinkat(parent, hiddenName().c_str(), AT_REMOVEDIR); });
}

} // namespace veilkeep
