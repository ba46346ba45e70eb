#include "core/filesystem/KeptAttributes.h"

#include "core/base/SystemCall.h"

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

// Only root may set some; those of the system's labels come from the place.
bool isForEverybody(std::string_view name) {
    return name.starts_with("user.") || name.starts_with("system.");
}

bool keepAttribute(int from, int to, const char* name) {
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    std::vector<char> value(size > 0 ? static_cast<std::size_t>(size) : 0);
    const ssize_t read = size > 0 ? ::fgetxattr(from, name, value.data(), value.size()) : size;
    return read >= 0 && ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(read), 0) == 0;
}

bool keepExtendedAttributes(int from, int to) {
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return true; // there are none, or none can be
    std::vector<char> names(static_cast<std::size_t>(size));
    const ssize_t read = ::flistxattr(from, names.data(), names.size());
    bool isKept = read >= 0;
    const char* const end = names.data() + (read > 0 ? read : 0);
    for (const char* name = names.data(); name < end; name += std::string_view(name).size() + 1)
        if (std::string_view(name) != "security.selinux" && (isRoot() || isForEverybody(name)))
            isKept = keepAttribute(from, to, name) && isKept;
    return isKept;
}

mode_t modeFor(const struct stat& status, bool hasOwner, bool mayHaveSetIds) {
    const mode_t mode = status.st_mode & 07777;
    const bool isDirectory = S_ISDIR(status.st_mode); // there the bit is for what is made in it
    return isDirectory || (hasOwner && mayHaveSetIds) ? mode : mode & ~mode_t{S_ISUID | S_ISGID};
}

} // namespace

bool keepAttributes(int from, const struct stat& status, int to) {
    struct stat made = {};
    const bool isOwned = isRoot() ? ::fchown(to, status.st_uid, status.st_gid) == 0
                                  : ::fchown(to, ~uid_t{0}, status.st_gid) == 0;
    const bool hasOwner =
        ::fstat(to, &made) == 0 && made.st_uid == status.st_uid && made.st_gid == status.st_gid;
    struct statvfs source = {};
    const bool mayHaveSetIds = ::fstatvfs(from, &source) == 0 && (source.f_flag & ST_NOSUID) == 0;
    bool isKept = isOwned || !isRoot();
    isKept = keepExtendedAttributes(from, to) && isKept;
    isKept = ::fchmod(to, modeFor(status, hasOwner, mayHaveSetIds)) == 0 && isKept;
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::futimens(to, times) == 0 && isKept;
}

bool keepAttributes(const struct stat& status, const Place& to) {
    const char* const name = to.name.c_str();
    bool isKept = ::fchownat(to.directory, name, isRoot() ? status.st_uid : ~uid_t{0}, status.st_gid,
                             AT_SYMLINK_NOFOLLOW) == 0 ||
                  !isRoot();
    if (!S_ISLNK(status.st_mode))
        isKept = ::fchmodat(to.directory, name, status.st_mode & 0777, 0) == 0 && isKept;
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::utimensat(to.directory, name, times, AT_SYMLINK_NOFOLLOW) == 0 && isKept;
}

} // namespace veilkeep
