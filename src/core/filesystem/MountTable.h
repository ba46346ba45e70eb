#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// One line of proc_pid_mountinfo(5), its escapes undone.
struct Mount {
    std::uint64_t id = 0;
    std::uint64_t parentId = 0;
    unsigned int major = 0; // of the device; 0 for a file system without one, and for btrfs
    unsigned int minor = 0;
    std::string root; // the directory of the file system that is seen at the mount point
    std::string mountPoint;
    std::string fileSystemType;
    std::string source;

    bool operator==(const Mount&) const = default;
};

// Mounts of one device show one file system, or parts of it.
inline bool isSameDevice(const Mount& one, const Mount& other) {
    return one.major == other.major && one.minor == other.minor;
}

// The mounts that this process sees, oldest first. A table never changes; any thread.
class MountTable {
public:
    MountTable() = default;

    // Lines that do not follow the format are left out.
    static MountTable parse(std::string_view mountinfo);

    // The table as it is now, read again only after the system said that it changed. An empty table where
    // /proc is not to be had.
    static std::shared_ptr<const MountTable> current();

    // As current(), but read in any case: for who met a mount that current() does not tell.
    static std::shared_ptr<const MountTable> reread();

    const std::vector<Mount>& mounts() const { return m_mounts; }
    const Mount* findById(std::uint64_t id) const; // null when there is none

    bool hasMountPoint(std::string_view path) const; // clean and free of links

    // The mount that is met last on the way down the path, which is absolute, clean and free of links; null
    // when there is none.
    const Mount* mountHolding(std::string_view path) const;

private:
    const Mount* firstMountOn(const Mount* parent, std::string_view path) const;

    std::vector<Mount> m_mounts;
};

// The mounted path as a path from the root of the mount's file system, so that it is the same however much
// of the file system is mounted, and where. The path is one that the mount holds.
std::string pathOnVolume(const Mount& mount, std::string_view path);

} // namespace veilkeep
