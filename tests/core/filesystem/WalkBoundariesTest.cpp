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
        {"escaped name",
         "1 1 0:1 / / rw - rootfs none rw\n2 1 0:2 / /a\\040b\\134\\012 rw - proc p rw\n",
         "/",
         Kind::PseudoFileSystems,
         {"a b\\\n"},
         {"a\\040b\\134\\012"}},
        {"covered at the same place",
         "1 0 0:1 / / rw - ext4 d rw\n2 1 0:2 / /m rw - autofs a rw\n"
         "3 2 0:3 / /m rw - nfs4 server:/ rw\n",
         "/",
         Kind::PseudoFileSystems,
         {},
         {"m"}},
        {"covering at the same place",
         "1 0 0:1 / / rw - ext4 d rw\n3 2 0:3 / /m rw - proc p rw\n"
         "2 1 0:2 / /m rw - nfs4 server:/ rw\n",
         "/",
         Kind::PseudoFileSystems,
         {"m"},
         {}},
        {"covered from above",
         "1 0 0:1 / / rw - ext4 d rw\n2 1 0:2 / /m/p rw - proc p rw\n"
         "3 1 0:3 / /m rw - ext4 e rw\n",
         "/",
         Kind::PseudoFileSystems,
         {},
         {"m/p", "m"}},
        {"root without a line of its own",
         "5 4 0:5 / /proc rw - proc p rw\n",
         "/",
         Kind::PseudoFileSystems,
         {"proc"},
         {}},
        {"no mounts known", "", "/", Kind::EveryMount, {}, {"", "proc"}},
        {"rubbish", "\n \nx y z\n1 1\n- - -", "/", Kind::EveryMount, {}, {"", "y"}},
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

TEST(WalkBoundaries, TellsARootThatHoldsNobodysFiles) {
    const std::string system = "1 0 0:1 / / rw - ext4 d rw\n2 1 0:2 / /sys rw - sysfs s rw\n"
                               "3 2 0:3 / /sys/fs/cgroup rw - tmpfs t rw\n";
    const std::pair<std::string, bool> rows[] = {
        {"/", false}, {"/sys", true}, {"/sys/fs", true}, {"/sys/fs/cgroup/a", false}, {"/system", false}};
    for (const auto& [root, expected] : rows)
        EXPECT_EQ(WalkBoundaries(MountTable::parse(system), root, Kind::PseudoFileSystems).rootIsPseudo(),
                  expected)
            << root;
}

} // namespace
} // namespace veilkeep
