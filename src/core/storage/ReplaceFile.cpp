#include "core/storage/ReplaceFile.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace veilkeep {
namespace {

Result<void> putInPlace(int directory, const std::string& target, std::string_view bytes) {
    TemporaryFile file(directory, target);
    if (auto result = file.create(); !result)
        return result;
    if (auto result = file.write(bytes); !result)
        return result;
    if (auto result = file.sync(); !result)
        return result;
    return file.putInPlace();
}

} // namespace

Result<std::string> replaceTarget(const std::string& path) {
    constexpr int maximumLinks = 40; // as the kernel's own limit
    std::string target = path;
    for (int links = 0; links <= maximumLinks; ++links) {
        struct stat status = {};
        if (::lstat(target.c_str(), &status) != 0) {
            if (errno == ENOENT && !target.empty())
                return target;
            return Error::system("lstat", target, errno);
        }
        if (S_ISREG(status.st_mode))
            return target;
        if (!S_ISLNK(status.st_mode))
            return Error{ErrorCode::NotAFile, "replace", target, S_ISDIR(status.st_mode) ? EISDIR : 0};
        const auto link = readLink(target);
        if (!link)
            return Error::system("readlink", target, errno);
        target = link->starts_with('/') ? *link : joinPath(directoryOf(target), *link);
    }
    return Error::system("readlink", path, ELOOP);
}

Result<void> replaceFile(const std::string& path, std::string_view bytes) {
    const auto target = replaceTarget(path);
    if (!target)
        return target.error();
    const std::string directoryPath = directoryOf(*target);
    const UniqueFd directory(
        retryOnInterrupt([&] { return ::open(directoryPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!directory)
        return Error::system("open", directoryPath, errno);
    if (auto placed = putInPlace(directory.get(), *target, bytes); !placed)
        return placed;
    if (const auto synced = syncDirectory(directory.get(), directoryPath); !synced) {
        Error error = synced.error();
        error.code = ErrorCode::NotDurable;
        return error;
    }
    return {};
}

} // namespace veilkeep
