#include "core/filesystem/WalkBoundaries.h"

#include "core/base/PathText.h"
#include "core/filesystem/MountTable.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace veilkeep {
namespace {

constexpr std::string_view pseudoFileSystems[] = {"autofs",
                                                  "binfmt_misc",
                                                  "bpf",
                                                  "cgroup",
                                                  "cgroup2",
                                                  "configfs",
                                                  "cpuset",
                                                  "debugfs",
                                                  "devpts",
                                                  "devtmpfs",
                                                  "efivarfs",
                                                  "functionfs",
                                                  "fuse.gvfsd-fuse",
                                                  "fuse.lxcfs",
                                                  "fuse.portal",
                                                  "fusectl",
                                                  "hugetlbfs",
                                                  "mqueue",
                                                  "nfsd",
                                                  "nsfs",
                                                  "proc",
                                                  "pstore",
                                                  "resctrl",
                                                  "rpc_pipefs",
                                                  "securityfs",
                                                  "selinuxfs",
                                                  "smackfs",
                                                  "sysfs",
                                                  "tracefs"};

bool isPseudo(std::string_view type) {
    return std::ranges::find(pseudoFileSystems, type) != std::end(pseudoFileSystems);
}

} // namespace

WalkBoundaries::WalkBoundaries(const MountTable& table, std::string_view root, Kind kind) {
    const Mount* ofRoot = table.mountHolding(root);
    m_rootIsPseudo = ofRoot && isPseudo(ofRoot->fileSystemType);
    for (const Mount& mount : table.mounts()) {
        const bool stops = kind == Kind::EveryMount || isPseudo(mount.fileSystemType);
        if (!stops || mount.mountPoint == root || !isSameOrBelow(mount.mountPoint, root) ||
            table.mountHolding(mount.mountPoint) != &mount)
            continue;
        m_names.emplace_back(lastPathComponent(mount.mountPoint));
        m_paths.push_back(mount.mountPoint.substr(root.size() + (root.ends_with('/') ? 0 : 1)));
    }
    std::ranges::sort(m_names);
    std::ranges::sort(m_paths);
}

bool WalkBoundaries::mayStopAt(std::string_view name) const {
    return std::ranges::binary_search(m_names, name, std::less<>());
}

bool WalkBoundaries::stopsAt(std::string_view path) const {
    return std::ranges::binary_search(m_paths, path, std::less<>());
}

} // namespace veilkeep
