#include "core/tracking/FileAlias.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/tracking/KnownVolumes.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

// A descriptor for looking at the item, not into it, and where it then lay.
struct OpenItem {
    UniqueFd fd;
    std::string resolvedPath; // free of links but for the item; empty where it is not to be learned
};

// Empty for what this process cannot reach from its root, and for a path too long to be told.
std::string pathOfDescriptor(int fd) {
    auto path = readLink("/proc/self/fd/" + std::to_string(fd));
    return path && path->starts_with('/') ? *std::move(path) : std::string();
}

Result<OpenItem> described(UniqueFd fd, const std::string& path) {
    if (!fd)
        return Error::system("open", path, errno);
    std::string resolved = pathOfDescriptor(fd.get());
    return OpenItem{std::move(fd), std::move(resolved)};
}

void locateOnVolume(std::optional<std::uint64_t> mountId, const std::string& path, AliasRecord& record) {
    if (path.empty())
        return;
    if (auto place = KnownVolumes::shared().locate(mountId, path)) {
        record.volume = std::move(place->volume);
        record.volumePath = std::move(place->volumePath);
    }
}

bool saysNothingIsThere(const Error& error) {
    return error.systemError == ENOENT || error.systemError == ENOTDIR;
}

// Tells where an item that is missing should be, as far as its directory is there.
AliasRecord describeMissingItem(const std::string& path) {
    AliasRecord record;
    record.lastPath = path;
    const std::string parent = directoryOf(path);
    const auto directory = described(
        UniqueFd(retryOnInterrupt([&] { return ::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); })),
        parent);
    if (!directory || directory->resolvedPath.empty())
        return record;
    if (const auto status = statusOfItem(directory->fd.get()))
        locateOnVolume(status->mountId, joinPath(directory->resolvedPath, lastPathComponent(path)), record);
    return record;
}

} // namespace

Result<AliasRecord> describeItemAt(const std::string& path) {
    const auto item = described(openItemAt(path), path);
    if (!item)
        return item.error();
    auto status = statusOfItem(item->fd.get());
    if (!status)
        return std::move(status).error();
    AliasRecord record;
    record.lastPath = path;
    record.item = std::move(status->identity);
    locateOnVolume(status->mountId, item->resolvedPath, record);
    // Refused here and there (by a sandbox, for instance): the other marks must do then.
    if (givesLastingHandles(record.volume.fileSystemType))
        if (auto handle = handleOfItem(item->fd.get()))
            record.item.handle = std::move(*handle);
    return record;
}

std::optional<std::string> aliasRecordFromPath(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;
    const auto item = describeItemAt(path);
    if (!item && !saysNothingIsThere(item.error()))
        return std::nullopt;
    return encodeAliasRecord(item ? *item : describeMissingItem(path));
}

} // namespace veilkeep
