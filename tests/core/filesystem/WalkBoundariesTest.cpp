#include "core/filesystem/WalkBoundaries.h"

#include "core/filesystem/MountTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veilkeep {
namespace {

using Kind = WalkBoundaries::Kind;

TEST(WalkBoundaries, FollowsTheMountsAsAPathDoes) {
    struct Row {
        const char* name;
        std::string mountInfo, root;
        Kind kind;
        std::vector<std::string> stops, passes;
    };
    const std::string system = "22 27 0:21 / /proc rw - proc proc rw\n"
                               "27 1 254:0 / / rw shared:1 master:2 - ext4 /dev/vda rw\n"
                               "30 27 0:30 / /home rw - ext4 /dev/vdb rw\n"
                               "31 30 0:31 / /home/u/.gvfs rw - fuse.gvfsd-fuse gvfs rw\n";
    const Row rows[] = {
        {"the root's line comes late",
         system,
         "/",
         Kind::PseudoFileSystems,
         {"proc", "home/u/.gvfs"},
         {"home", "", "proc/sys"}},
        {"every mount", system, "/", Kind::EveryMount, {"proc", "home", "home/u/.gvfs"}, {"", "home/u"}},
        {"below a root", system, "/home", Kind::PseudoFileSystems, {"u/.gvfs"}, {"home/u/.gvfs", "proc"}},
        {"only names in common", system, "/hom", Kind::EveryMount, {}, {"", "e", "e/u/.gvfs"}},
        {"covered from above",
         "1 0 0:1 / / rw - ext4 d rw\n2 1 0:2 / /m/p rw - proc p rw\n"
         "3 1 0:3 / /m rw - ext4 e rw\n",
         "/",
         Kind::PseudoFileSystems,
         {},
         {"m/p", "m"}},
    };
    for (const Row& row : rows) {
        const WalkBoundaries boundaries(MountTable::parse(row.mountInfo), row.root, row.kind);
        for (const std::string& path : row.stops) {
            EXPECT_TRUE(boundaries.stopsAt(path)) << row.name << ": " << path;
            EXPECT_TRUE(boundaries.mayStopAt(path.substr(path.rfind('/') + 1))) << row.name << ": " << path;
        }
        for (const std::string& path : row.passes)
            EXPECT_FALSE(boundaries.stopsAt(path)) << row.name << ": " << path;
    }
}

} // namespace
} // namespace veilkeep
