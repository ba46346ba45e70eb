#include "core/tracking/FileAlias.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/ResolvedPath.h"

#include <fcntl.h>

#include <cerrno>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>

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

Result<OpenItem> openItem(std::string path, int flags) {
    OpenItem item;
    item.fd.reset(retryOnInterrupt([&] { return ::open(path.c_str(), O_PATH | O_CLOEXEC | flags); }));
    if (!item.fd)
        return Error::system("open", std::move(path), errno);
    item.resolvedPath = pathOfDescriptor(item.fd.get());
    return item;
}

// The mount that an item lies in. Mount numbers are given out again: one whose mount point does not lie
// above the item is another's.
const Mount* findMount(const MountTable& table, std::optional<std::uint64_t> id, const std::string& path) {
    if (!id)
        return table.mountHolding(path);
    const Mount* const mount = table.findById(*id);
    return mount && isSameOrBelow(path, mount->mountPoint) ? mount : nullptr;
}

// Remembers the identity of each volume for as long as the mounts stay as they are.
class KnownVolumes {
public:
    void locate(std::optional<std::uint64_t> mountId, const std::string& path, AliasRecord& record) {
        auto table = MountTable::current();
        const Mount* mount = findMount(*table, mountId, path);
        if (!mount) {
            table = MountTable::reread();
            mount = findMount(*table, mountId, path);
        }
        if (!mount)
            return;
        record.volume = identity(table, *mount);
        record.volumePath = pathOnVolume(*mount, path);
    }

private:
    VolumeIdentity identity(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
        const std::lock_guard lock(m_mutex);
        if (table != m_table) {
            m_identities.clear();
            m_table = table;
        }
        const auto known = m_identities.find(mount.id);
        if (known != m_identities.end())
            return known->second;
        return m_identities.emplace(mount.id, volumeIdentityOfMount(mount)).first->second;
    }

    std::mutex m_mutex;
    std::shared_ptr<const MountTable> m_table;
    std::unordered_map<std::uint64_t, VolumeIdentity> m_identities;
};

void locateOnVolume(std::optional<std::uint64_t> mountId, const std::string& path, AliasRecord& record) {
    static KnownVolumes volumes;
    if (!path.empty())
        volumes.locate(mountId, path, record);
}

bool saysNothingIsThere(const Error& error) {
    return error.systemError == ENOENT || error.systemError == ENOTDIR;
}

Result<void> describeItem(const std::string& path, AliasRecord& record) {
    const auto item =
        openItem(std::string(withoutTrailingSlashes(path)), O_NOFOLLOW); // a "/" would have it followed
    if (!item)
        return item.error();
    auto status = statusOfItem(item->fd.get());
    if (!status)
        return std::move(status).error();
    record.item = std::move(status->identity);
    locateOnVolume(status->mountId, item->resolvedPath, record);
    if (!givesLastingHandles(record.volume.fileSystemType))
        return {};
    // Refused here and there (by a sandbox, for instance): the other marks must do then.
    if (auto handle = handleOfItem(item->fd.get()))
        record.item.handle = std::move(*handle);
    return {};
}

// Tells where an item that is missing should be, as far as its directory is there.
void describeMissingItem(const std::string& path, AliasRecord& record) {
    const auto directory = openItem(directoryOf(path), O_DIRECTORY);
    if (!directory || directory->resolvedPath.empty())
        return;
    if (const auto status = statusOfItem(directory->fd.get()))
        locateOnVolume(status->mountId, joinPath(directory->resolvedPath, lastPathComponent(path)), record);
}

} // namespace

std::optional<std::string> aliasRecordFromPath(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;
    AliasRecord record;
    record.lastPath = path;
    if (const auto described = describeItem(path, record); !described) {
        if (!saysNothingIsThere(described.error()))
            return std::nullopt;
        describeMissingItem(path, record);
    }
    return encodeAliasRecord(record);
}

} // namespace veilkeep
