#include "core/tracking/KnownVolumes.h"

#include "core/base/PathText.h"
#include "core/tracking/IdentityComparison.h"

namespace veilkeep {
namespace {

// Mount numbers are given out again: one whose mount point does not lie above the item is another's.
const Mount* findMount(const MountTable& table, std::optional<std::uint64_t> id, const std::string& path) {
    if (!id)
        return table.mountHolding(path);
    const Mount* const mount = table.findById(*id);
    return mount && isSameOrBelow(path, mount->mountPoint) ? mount : nullptr;
}

} // namespace

bool mayBeSameVolume(const VolumeIdentity& one, const VolumeIdentity& other) {
    const bool sourceCounts = lastingMarksOf(one.fileSystemType) == LastingMarks::None;
    return sourceCounts ? one == other : one.fileSystemType == other.fileSystemType && one.uuid == other.uuid;
}

KnownVolumes& KnownVolumes::shared() {
    static KnownVolumes volumes;
    return volumes;
}

std::optional<KnownVolumes::Place> KnownVolumes::locate(std::optional<std::uint64_t> mountId,
                                                        const std::string& path) {
    auto table = MountTable::current();
    const Mount* mount = findMount(*table, mountId, path);
    if (!mount) {
        table = MountTable::reread();
        mount = findMount(*table, mountId, path);
    }
    if (!mount)
        return std::nullopt;
    return Place{identity(table, *mount), pathOnVolume(*mount, path)};
}

std::vector<Mount> KnownVolumes::mountsOf(const VolumeIdentity& volume) {
    const auto table = MountTable::current();
    std::vector<Mount> found;
    for (const Mount& mount : table->mounts())
        if (mount.fileSystemType == volume.fileSystemType &&
            mayBeSameVolume(identity(table, mount), volume) &&
            table->mountHolding(mount.mountPoint) == &mount)
            found.push_back(mount);
    return found;
}

VolumeIdentity KnownVolumes::identity(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
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

} // namespace veilkeep
