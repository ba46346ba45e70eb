#include "core/filesystem/Directories.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace veilkeep {
namespace {

bool isDirectory(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

UniqueFd openStep(int directory, const std::string& path, int flags) {
    return UniqueFd(
        retryOnInterrupt([&] { return ::openat(directory, path.c_str(), flags | O_DIRECTORY | O_CLOEXEC); }));
}

UniqueFd openWithoutLinks(int directory, const std::string& name) {
    open_how how = {};
    how.flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS;
    const long fd =
        retryOnInterrupt([&] { return ::syscall(SYS_openat2, directory, name.c_str(), &how, sizeof how); });
    if (fd >= 0 || errno != ENOSYS)
        return UniqueFd(static_cast<int>(fd));
    return UniqueFd(retryOnInterrupt(
        [&] { return ::openat(directory, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW); }));
}

} // namespace

Result<void> makeDirectories(const std::string& path, mode_t mode) {
    if (path.empty())
        return Error{ErrorCode::InvalidArgument, "mkdir", path, 0};
    if (path.size() >= PATH_MAX) // nor could its parents be made, however many there are
        return Error::system("mkdir", path, ENAMETOOLONG);
    if (isDirectory(path))
        return {};
    const std::string parent = directoryOf(path);
    if (auto made = makeDirectories(parent, mode); !made)
        return made;
    if (::mkdir(path.c_str(), mode) == 0)
        return syncDirectory(parent);
    const int error = errno;
    if (error != EEXIST)
        return Error::system("mkdir", path, error);
    if (!isDirectory(path)) // else another process was quicker
        return Error::system("mkdir", path, ENOTDIR);
    return {};
}

UniqueFd openDirectoryInPieces(std::string_view path, int flags) {
    UniqueFd directory = openStep(AT_FDCWD, "/", O_PATH);
    if (!directory)
        return directory;
    std::string piece = ".";
    for (const std::string_view component : pathComponents(path)) {
        if (component == "/")
            continue;
        if (piece.size() + component.size() + 2 > PATH_MAX) {
            directory = openStep(directory.get(), piece, O_PATH);
            if (!directory)
                return directory;
            piece = ".";
        }
        piece = joinPath(piece, component);
    }
    return openStep(directory.get(), piece, flags);
}

UniqueFd openDirectoryWithoutLinks(std::string_view path) {
    UniqueFd directory = openStep(AT_FDCWD, "/", O_PATH);
    for (const std::string_view component : pathComponents(path)) {
        if (component == "/")
            continue;
        if (!directory)
            return directory;
        directory = openWithoutLinks(directory.get(), std::string(component));
    }
    return directory;
}

std::vector<std::string> entryNamesIn(const std::string& directory) {
    std::vector<std::string> names;
    const DirectoryStream stream(::opendir(directory.c_str()));
    while (const dirent* const entry = stream ? ::readdir(stream.get()) : nullptr)
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            names.emplace_back(name);
    return names;
}

Result<void> syncDirectory(const std::string& path) {
    const bool isLong = path.size() >= PATH_MAX && path.starts_with('/');
    const UniqueFd directory =
        isLong ? openDirectoryInPieces(path, O_RDONLY) : openStep(AT_FDCWD, path, O_RDONLY);
    if (!directory)
        return Error::system("open", path, errno);
    return syncDirectory(directory.get(), path);
}

Result<void> syncDirectory(int directory, const std::string& path) {
    if (retryOnInterrupt([&] { return ::fsync(directory); }) != 0 && errno != EINVAL)
        return Error::system("fsync", path, errno);
    return {};
}

} // namespace veilkeep
