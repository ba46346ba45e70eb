#include "platform/linux/filemanagers/PlacedFile.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/storage/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <set>

namespace veilkeep {
namespace {

constexpr mode_t directoryMode = 0700; // as the XDG Base Directory Specification wants it

Result<void> put(int directory, const std::string& path, std::string_view bytes, const struct stat& access) {
    TemporaryFile file(directory, path);
    if (auto created = file.create(); !created)
        return created;
    if (auto written = file.write(bytes); !written)
        return written;
    if (auto given = file.giveAccessOf(access); !given)
        return given;
    if (auto synced = file.sync(); !synced)
        return synced;
    return file.putInPlace();
}

// The change is made; a power cut may take it back.
void sync(const std::string& directory) {
    if (const auto synced = syncDirectory(directory); !synced)
        logError("A directory of menu entries is not synced", synced.error());
}

} // namespace

Result<void> placeFile(const std::string& path, std::string_view bytes, mode_t mode) {
    const std::string folder = directoryOf(path);
    const UniqueFd directory(
        retryOnInterrupt([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!directory)
        return Error::system("open", path, errno);
    struct stat access = {};
    if (::lstat(path.c_str(), &access) != 0) {
        access.st_mode = mode;
        access.st_gid = ::getegid();
    }
    auto placed = put(directory.get(), path, bytes, access);
    if (placed)
        sync(folder);
    return placed;
}

Result<void> removePlacedFile(const std::string& path) {
    if (::unlink(path.c_str()) != 0)
        return Error::system("unlink", path, errno);
    sync(directoryOf(path));
    return {};
}

Result<int> makePlace(const std::string& directory) {
    int missing = 0;
    for (std::string each = directory; !itemExistsAt(each) && each != "/"; each = parentPath(each))
        ++missing;
    if (auto made = makeDirectories(directory, directoryMode); !made)
        return made.error();
    return missing;
}

void removePlaces(const std::vector<MadePlace>& places) {
    std::set<std::string, std::greater<>> directories; // what lies in one comes before it
    for (const MadePlace& place : places) {
        std::string directory = place.directory;
        for (int count = place.count; count > 0; --count, directory = parentPath(directory))
            directories.insert(directory);
    }
    for (const std::string& directory : directories)
        if (::rmdir(directory.c_str()) != 0 && errno != ENOTEMPTY && errno != EEXIST && errno != ENOENT)
            logError("A directory that was made for menu entries stays",
                     Error::system("rmdir", directory, errno));
}

} // namespace veilkeep
