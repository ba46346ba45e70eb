#include "core/storage/ListOwnership.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace veilkeep {
namespace {

Result<UniqueFd> openLockFile(const std::string& path) {
    UniqueFd file(retryOnInterrupt(
        [&] { return ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600); }));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0)
        return Error::system("open", path, errno);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::NotAFile, "open", path, 0};
    return file;
}

// Whether the open file is still the one that others would open.
bool isAt(const UniqueFd& file, const std::string& path) {
    struct stat opened = {}, present = {};
    return ::fstat(file.get(), &opened) == 0 && ::lstat(path.c_str(), &present) == 0 &&
           opened.st_dev == present.st_dev && opened.st_ino == present.st_ino;
}

} // namespace

Result<ListOwnership> ListOwnership::take(const std::string& dataDirectory, std::chrono::milliseconds wait) {
    using std::chrono::steady_clock;
    const auto deadline = steady_clock::now() + wait;
    if (const auto made = makeDirectories(dataDirectory, 0700); !made)
        return made.error();
    if (::faccessat(AT_FDCWD, dataDirectory.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return Error::system("access", dataDirectory, errno);
    const std::string path = joinPath(dataDirectory, ".lock");
    for (;;) {
        Result<UniqueFd> file = openLockFile(path);
        if (!file)
            return file.error();
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now());
        const auto locked = lockExclusively(file->get(), path, std::max(left, std::chrono::milliseconds(0)));
        if (!locked)
            return locked.error();
        if (isAt(*file, path)) // else somebody took the name away: a lock that nobody else would meet
            return ListOwnership(std::move(*file));
    }
}

} // namespace veilkeep
