#pragma once

#include "core/filesystem/MountTable.h"
#include "core/tracking/AliasRecord.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace veilkeep {

// Whether both may be one volume. Where there is no UUID the source is a device that may have another name
// today; only for what has no lasting marks on its items (network and FUSE file systems) it must be the same.
bool mayBeSameVolume(const VolumeIdentity& one, const VolumeIdentity& other);

// The identities of the volumes that are mounted, remembered for as long as the mounts stay as they are. Any
// thread.
class KnownVolumes {
public:
    static KnownVolumes& shared();

    struct Location {
        VolumeIdentity volume;
        std::string volumePath; // from the volume's root
    };

    // Where an item lies, by its real path and the number that the system gives for its mount, which is not
    // to be had everywhere. Nothing where the mount is not to be found.
    std::optional<Location> locate(std::optional<std::uint64_t> mountId, const std::string& path);

    // Every mount of the volume that can be reached by its mount point, oldest first.
    std::shared_ptr<const std::vector<Mount>> mountsOf(const VolumeIdentity& volume);

    // Those of them on which the record's item may be. A copy of a whole volume has its UUID too: where both
    // are mounted, only the one counts that holds the recorded path, and none where neither does.
    std::shared_ptr<const std::vector<Mount>> mountsToSearch(const AliasRecord& record);

private:
    VolumeIdentity identity(const std::shared_ptr<const MountTable>& table, const Mount& mount);

    void useTable(const std::shared_ptr<const MountTable>& table); // this and the next with m_mutex held
    const VolumeIdentity& identityLocked(const Mount& mount);

    std::mutex m_mutex; // of all below
    std::shared_ptr<const MountTable> m_table;
    std::unordered_map<std::uint64_t, VolumeIdentity> m_identities; // by the mount's number
    std::map<std::tuple<std::string, std::string, std::string>, std::shared_ptr<const std::vector<Mount>>>
        m_mounts; // by the volume's type, UUID and source
};

} // namespace veilkeep
