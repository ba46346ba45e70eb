#include "core/filesystem/KeptAttributes.h"

#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {
namespace {

bool isRoot() {
    return ::geteuid() == 0;
}

// Only root may set some; those of the system's labels come from the place. What gives a program rights goes
// along as the set-user-ID bit does.
bool isToBeKept(std::string_view name, bool mayGiveRights) {
    if (name == "security.selinux" || (name == "security.capability" && !mayGiveRights))
        return false;
    return isRoot() || name.starts_with("user.") || name.starts_with("system.");
}

bool keepAttribute(int from, int to, const char* name) {
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    std::vector<char> value(size > 0 ? static_cast<std::size_t>(size) : 0);
    const ssize_t read = size > 0 ? ::fgetxattr(from, name, value.data(), value.size()) : size;
    return read >= 0 && ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(read), 0) == 0;
}

bool keepExtendedAttributes(int from, int to, bool mayGiveRights) {
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return true; // there are none, or none can be
    std::vector<char> names(static_cast<std::size_t>(size));
    const ssize_t read = ::flistxattr(from, names.data(), names.size());
    bool isKept = read >= 0;
    const char* const end = names.data() + (read > 0 ? read : 0);
    for (const char* name = names.data(); name < end; name += std::string_view(name).size() + 1)
        if (isToBeKept(name, mayGiveRights))
            isKept = keepAttribute(from, to, name) && isKept;
    return isKept;
}

// Another group gets no more than everybody has. With an access list these bits are the most that anybody
// named in it has: nobody gets more by it, and whoever it shuts out stays so.
mode_t rightsFor(const struct stat& status, bool hasGroup) {
    const mode_t mode = status.st_mode & 0777;
    return hasGroup ? mode : mode & (~mode_t{S_IRWXG} | (mode & S_IRWXO) << 3);
}

mode_t modeFor(const struct stat& status, bool hasGroup, bool mayGiveRights) {
    const mode_t bits = status.st_mode & (S_ISUID | S_ISGID | S_ISVTX);
    const bool isDirectory = S_ISDIR(status.st_mode); // there the bit is for what is made in it
    return rightsFor(status, hasGroup) | (isDirectory || mayGiveRights ? bits : bits & S_ISVTX);
}

} // namespace

bool keepAttributes(int from, const struct stat& status, int to) {
    struct stat made = {};
    const bool isOwned = isRoot() ? ::fchown(to, status.st_uid, status.st_gid) == 0
                                  : ::fchown(to, ~uid_t{0}, status.st_gid) == 0;
    const bool hasGroup = ::fstat(to, &made) == 0 && made.st_gid == status.st_gid;
    const bool hasOwner = hasGroup && made.st_uid == status.st_uid;
    struct statvfs source = {};
    const bool mayGiveRights = hasOwner && ::fstatvfs(from, &source) == 0 && (source.f_flag & ST_NOSUID) == 0;
    bool isKept = isOwned || !isRoot();
    isKept = keepExtendedAttributes(from, to, mayGiveRights) && isKept;
    isKept = ::fchmod(to, modeFor(status, hasGroup, mayGiveRights)) == 0 && isKept;
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::futimens(to, times) == 0 && isKept;
}

// By what is opened: the folder may be another user's by now, who puts something else in its place.
bool keepAttributes(const struct stat& status, const Place& to) {
    const UniqueFd item(::openat(to.directory, to.name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct stat made = {};
    if (!item || ::fstat(item.get(), &made) != 0 || (made.st_mode & S_IFMT) != (status.st_mode & S_IFMT))
        return false;
    bool isKept =
        ::fchownat(item.get(), "", isRoot() ? status.st_uid : ~uid_t{0}, status.st_gid, AT_EMPTY_PATH) == 0 ||
        !isRoot();
    const bool hasGroup = ::fstat(item.get(), &made) == 0 && made.st_gid == status.st_gid;
    const std::string opened = "/proc/self/fd/" + std::to_string(item.get());
    if (!S_ISLNK(status.st_mode))
        isKept = ::chmod(opened.c_str(), rightsFor(status, hasGroup)) == 0 && isKept;
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::utimensat(item.get(), "", times, AT_EMPTY_PATH) == 0 && isKept;
}

} // namespace veilkeep
