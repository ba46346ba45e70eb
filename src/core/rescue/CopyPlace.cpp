#include "core/rescue/CopyPlace.h"

#include "core/base/CHandles.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/names/NameKeeping.h"
#include "core/names/NumberedName.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <random>
#include <string_view>

namespace veilkeep {
namespace {

// Where the file system cannot rename without replacing, over something empty that was made for it.
int renameOverEmpty(const Place& from, const std::string& name, bool isDirectory) {
    // Closed at once: some file systems keep what is open when it is replaced.
    const auto makeFile = [&] {
        return UniqueFd(::openat(from.directory, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600))
            .get();
    };
    if (isDirectory ? ::mkdirat(from.directory, name.c_str(), S_IRWXU) != 0 : makeFile() < 0)
        return errno;
    if (::renameat(from.directory, from.name.c_str(), from.directory, name.c_str()) == 0)
        return 0;
    const int error = errno;
    ::unlinkat(from.directory, name.c_str(), isDirectory ? AT_REMOVEDIR : 0);
    return error;
}

int renameWithoutReplacing(const Place& from, const std::string& name, bool isDirectory) {
    if (::renameat2(from.directory, from.name.c_str(), from.directory, name.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
        return errno;
    return renameOverEmpty(from, name, isDirectory);
}

} // namespace

bool isDirectory(const Place& place) {
    const auto status = statusOf(place);
    return status && S_ISDIR(status->st_mode);
}

Result<std::vector<std::string>> entryNames(int directory, const std::string& path) {
    UniqueFd own(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOATIME));
    if (!own && errno == EPERM)
        own.reset(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const DirectoryStream stream(own ? ::fdopendir(own.get()) : nullptr);
    if (!stream)
        return Error::system("open", path, errno);
    own.release();
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* const entry = ::readdir(stream.get())) {
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            names.emplace_back(name);
        errno = 0;
    }
    if (errno != 0)
        return Error::system("read", path, errno);
    return names;
}

std::string freeNameIn(const Place& place) {
    if (!statusOf(place))
        return place.name;
    return firstNumberedName(place.name, isDirectory(place), longestNameIn(place.directory),
                             [&](const std::string& name) {
                                 return !statusOf({place.directory, name});
                             });
}

std::string unfinishedName() {
    std::random_device random;
    return ".veilkeep-copy-" + std::to_string(::getpid()) + std::to_string(random());
}

Result<std::string> giveFreeName(const Place& unfinished, const std::string& name) {
    const bool isFolder = isDirectory(unfinished);
    std::string given = name;
    int error = 0;
    const auto isGiven = [&](const std::string& free) {
        error = renameWithoutReplacing(unfinished, free, isFolder);
        return error != EEXIST;
    };
    if (!isGiven(name))
        given = firstNumberedName(name, isFolder, longestNameIn(unfinished.directory), isGiven);
    if (error != 0)
        return Error::system("rename", {}, error);
    return given;
}

int removeUnfinished(const Place& place) {
    if (::unlinkat(place.directory, place.name.c_str(), 0) == 0 || errno == ENOENT)
        return 0;
    const int error = errno;
    const UniqueFd folder(
        ::openat(place.directory, place.name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return error;
    if (::geteuid() != 0) // whoever is, needs no rights
        ::chmod(("/proc/self/fd/" + std::to_string(folder.get())).c_str(), S_IRWXU);
    const auto names = entryNames(folder.get(), {});
    if (!names)
        return names.error().systemError;
    for (const std::string& name : *names)
        if (const int notRemoved = removeUnfinished({folder.get(), name}); notRemoved != 0)
            return notRemoved;
    return ::unlinkat(place.directory, place.name.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
}

} // namespace veilkeep
