#include "worker/ItemDirectories.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/Directories.h"
#include "core/names/HiddenName.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace veilkeep {
namespace {

constexpr int directoryFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

const std::string& hiddenName() {
    static const std::string name(hiddenDirectoryName);
    return name;
}

UniqueFd openWithoutLinks(int directory, const std::string& name) {
    open_how how = {};
    how.flags = directoryFlags;
    how.resolve = RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS;
    const long fd =
        retryOnInterrupt([&] { return ::syscall(SYS_openat2, directory, name.c_str(), &how, sizeof how); });
    if (fd >= 0 || errno != ENOSYS)
        return UniqueFd(static_cast<int>(fd));
    return UniqueFd(
        retryOnInterrupt([&] { return ::openat(directory, name.c_str(), directoryFlags | O_NOFOLLOW); }));
}

UniqueFd openRefusingLinks(std::string_view path) {
    UniqueFd directory(::open("/", directoryFlags));
    for (const std::string_view component : pathComponents(path)) {
        if (component == "/")
            continue;
        if (!directory)
            return directory;
        directory = openWithoutLinks(directory.get(), std::string(component));
    }
    return directory;
}

// The new directory is for everybody who may use its parent.
void takeAfterParent(int made, int parent) {
    struct stat status = {};
    if (::fstat(parent, &status) != 0)
        return; // it stays the maker's alone
    // Owner first: changing it drops the set-id bits. File systems without owners and modes refuse both, and
    // show what they show for every directory.
    if (::geteuid() == 0) [[maybe_unused]]
        const int owned = ::fchown(made, status.st_uid, status.st_gid);
    [[maybe_unused]] const int moded = ::fchmod(made, status.st_mode & 07777);
}

// Nothing can be moved out of it, and a ".SYS_INDEX" made in it could not be taken away again.
bool takesNewEntriesOnly(int directory) {
    struct statx status = {};
    return ::statx(directory, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, 0, &status) == 0 &&
           (status.stx_attributes & STATX_ATTR_APPEND) != 0;
}

} // namespace

UniqueFd openDirectory(std::string_view path) {
    return ::geteuid() == 0 ? openRefusingLinks(path) : openDirectoryInPieces(path, directoryFlags);
}

HiddenDirectory openHiddenDirectory(int parent) {
    HiddenDirectory hidden;
    hidden.fd.reset(retryOnInterrupt(
        [&] { return ::openat(parent, hiddenName().c_str(), directoryFlags | O_NOFOLLOW); }));
    hidden.error = hidden.fd ? 0 : errno;
    return hidden;
}

bool isHiddenDirectory(int directory) {
    struct stat own = {}, hidden = {};
    const std::string path = "../" + hiddenName();
    return ::fstat(directory, &own) == 0 &&
           ::fstatat(directory, path.c_str(), &hidden, AT_SYMLINK_NOFOLLOW) == 0 &&
           own.st_dev == hidden.st_dev && own.st_ino == hidden.st_ino;
}

HiddenDirectory openOrMakeHiddenDirectory(int parent) {
    HiddenDirectory hidden = openHiddenDirectory(parent);
    if (hidden.error != ENOENT)
        return hidden;
    if (takesNewEntriesOnly(parent)) {
        hidden.error = EPERM;
        return hidden;
    }
    const bool made = retryOnInterrupt([&] { return ::mkdirat(parent, hiddenName().c_str(), 0700); }) == 0;
    if (!made && errno != EEXIST) { // EEXIST: another worker was quicker
        hidden.error = errno;
        return hidden;
    }
    if (made) {
        const UniqueFd readable(retryOnInterrupt([&] {
            return ::openat(parent, hiddenName().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        }));
        if (readable)
            takeAfterParent(readable.get(), parent);
    }
    hidden = openHiddenDirectory(parent);
    hidden.made = made;
    return hidden;
}

void removeHiddenDirectoryIfEmpty(int parent) {
    // Refused while anything lies in it; an empty one that may not be removed does no harm.
    retryOnInterrupt([&] { return ::unlinkat(parent, hiddenName().c_str(), AT_REMOVEDIR); });
}

} // namespace veilkeep
