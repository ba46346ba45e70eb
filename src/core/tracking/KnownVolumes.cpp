#include "core/tracking/KnownVolumes.h"

#include "core/base/PathText.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/tracking/IdentityComparison.h"

#include <algorithm>
#include <iterator>

namespace veilkeep {
namespace {

// Mount numbers are given out again: one whose mount point does not lie above the item is another's.
const Mount* findMount(const MountTable& table, std::optional<std::uint64_t> id, const std::string& path) {
    if (!id)
        return table.mountHolding(path);
    const Mount* const mount = table.findById(*id);
    return mount && isSameOrBelow(path, mount->mountPoint) ? mount : nullptr;
}

bool areOnOneDevice(const std::vector<Mount>& mounts) {
    return std::ranges::all_of(mounts,
                               [&](const Mount& mount) { return isSameDevice(mount, mounts.front()); });
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

std::optional<KnownVolumes::Location> KnownVolumes::locate(std::optional<std::uint64_t> mountId,
                                                           const std::string& path) {
    auto table = MountTable::current();
    const Mount* mount = findMount(*table, mountId, path);
    if (!mount) {
        table = MountTable::reread();
        mount = findMount(*table, mountId, path);
    }
    if (!mount)
        return std::nullopt;
    return Location{identity(table, *mount), pathOnVolume(*mount, path)};
}

std::shared_ptr<const std::vector<Mount>> KnownVolumes::mountsOf(const VolumeIdentity& volume) {
    const auto table = MountTable::current();
    const std::lock_guard lock(m_mutex);
    useTable(table);
    auto& mounts = m_mounts[{volume.fileSystemType, volume.uuid, volume.source}];
    if (mounts)
        return mounts;
    auto found = std::make_shared<std::vector<Mount>>();
    for (const Mount& mount : table->mounts())
        if (mount.fileSystemType == volume.fileSystemType && mayBeSameVolume(identityLocked(mount), volume) &&
            table->mountHolding(mount.mountPoint) == &mount)
            found->push_back(mount);
    mounts = std::move(found);
    return mounts;
}

std::shared_ptr<const std::vector<Mount>> KnownVolumes::mountsToSearch(const AliasRecord& record) {
    auto mounts = mountsOf(record.volume);
    if (record.volume.uuid.empty() || areOnOneDevice(*mounts))
        return mounts;
    const auto table = MountTable::current();
    const Mount* const holding =
        table->mountHolding(withResolvedParent(record.lastPath).value_or(cleanPath(record.lastPath)));
    auto onItsDevice = std::make_shared<std::vector<Mount>>();
    std::ranges::copy_if(*mounts, std::back_inserter(*onItsDevice),
                         [&](const Mount& mount) { return holding && isSameDevice(mount, *holding); });
    return onItsDevice;
}

VolumeIdentity KnownVolumes::identity(const std::shared_ptr<const MountTable>& table, const Mount& mount) {
    const std::lock_guard lock(m_mutex);
    useTable(table);
    return identityLocked(mount);
}

void KnownVolumes::useTable(const std::shared_ptr<const MountTable>& table) {
    if (table == m_table)
        return;
    m_identities.clear();
    m_mounts.clear();
    m_table = table;
}

const VolumeIdentity& KnownVolumes::identityLocked(const Mount& mount) {
    const auto known = m_identities.find(mount.id);
    if (known != m_identities.end())
        return known->second;
    return m_identities.emplace(mount.id, volumeIdentityOfMount(mount)).first->second;
}

} // namespace veilkeep
