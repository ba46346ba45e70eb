#include "core/filesystem/ItemAtPath.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/Directories.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace veilkeep {
namespace {

constexpr int flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;

UniqueFd openIn(int directory, const std::string& path) {
    return UniqueFd(retryOnInterrupt([&] { return ::openat(directory, path.c_str(), flags); }));
}

} // namespace

UniqueFd openItemAt(const std::string& path) {
    const std::string item(withoutTrailingSlashes(path));
    UniqueFd fd = openIn(AT_FDCWD, item);
    if (fd || errno != ENAMETOOLONG || !item.starts_with('/'))
        return fd;
    const UniqueFd parent = openDirectoryInPieces(parentPath(item), O_PATH);
    return parent ? openIn(parent.get(), std::string(lastPathComponent(item))) : UniqueFd();
}

bool itemExistsAt(const std::string& path) {
    struct stat status = {};
    const std::string item(withoutTrailingSlashes(path));
    if (::lstat(item.c_str(), &status) == 0)
        return true;
    return errno == ENAMETOOLONG && openItemAt(item);
}

bool isDirectoryAt(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isProgramAt(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

} // namespace veilkeep
