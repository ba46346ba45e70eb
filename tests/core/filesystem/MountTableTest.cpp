#include "core/filesystem/MountTable.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(MountTable, ReadsLines) {
    const struct {
        const char* line;
        Mount mount;
    } rows[] = {
        {"27 1 254:0 / / rw,relatime - ext4 /dev/vda rw,discard",
         {27, 1, 254, 0, "/", "/", "ext4", "/dev/vda"}},
        {"36 35 98:1 /mnt1 /mnt2 rw shared:2 master:1 - ext3 /dev/root rw,errors=continue",
         {36, 35, 98, 1, "/mnt1", "/mnt2", "ext3", "/dev/root"}},
        {R"(40 27 8:17 /a\011b /media/My\040Disk\134\012- ro unbindable - vfat /dev/s\040d ro)",
         {40, 27, 8, 17, "/a\tb", "/media/My Disk\\\n-", "vfat", "/dev/s d"}},
        {"41 27 0:44 / /media/\xff\xfe rw - fuse.sshfs me@host:/x\\y rw",
         {41, 27, 0, 44, "/", "/media/\xff\xfe", "fuse.sshfs", "me@host:/x\\y"}},
        {"42 27 0:45 / /no-source rw - tmpfs  rw", {42, 27, 0, 45, "/", "/no-source", "tmpfs", ""}},
    };
    std::string all;
    for (const auto& row : rows) {
        const MountTable table = MountTable::parse(row.line);
        ASSERT_EQ(table.mounts().size(), 1u) << row.line;
        EXPECT_EQ(table.mounts().front(), row.mount) << row.line;
        all += std::string(row.line) + "\nno such line\n\n43 27 x:1 / /x rw - a b c\n44 27 0:1 / /x rw\n";
    }
    EXPECT_EQ(MountTable::parse(all).mounts().size(), std::size(rows));
    EXPECT_EQ(MountTable::parse(all).findById(40)->minor, 17u);
    EXPECT_EQ(MountTable::parse(all).findById(1), nullptr);
}

TEST(MountTable, FindsTheMountThatHoldsAPath) {
    const std::string_view text = "1 1 8:1 / / rw - ext4 root rw\n"
                                  "2 1 8:2 / /home rw - ext4 hidden-home rw\n"
                                  "3 2 8:3 / /home/u/old rw - ext4 hidden-by-home rw\n"
                                  "4 2 8:4 / /home rw - ext4 home rw\n"
                                  "5 4 8:5 / /home/u/disk rw - ext4 disk rw\n"
                                  "6 1 8:6 / /media/a/b rw - ext4 hidden-by-media rw\n"
                                  "7 1 8:7 / /media rw - ext4 media rw\n";
    const std::pair<std::string, std::string> rows[] = {
        {"/", "root"},
        {"/home", "home"},
        {"/home/u/disk/a/b", "disk"},
        {"/home/u/disks", "home"},
        {"/home/u/old/x", "home"},
        {"/media/a/b/c", "media"},
    };
    const MountTable table = MountTable::parse(text);
    for (const auto& [path, source] : rows)
        EXPECT_EQ(table.mountHolding(path)->source, source) << path;
    const MountTable rootless = MountTable::parse("9 8 0:1 / /proc rw - proc proc rw");
    EXPECT_EQ(rootless.mountHolding("/proc/self")->source, "proc");
    EXPECT_EQ(rootless.mountHolding("/a"), nullptr);
    const MountTable circle = MountTable::parse("1 2 0:1 / / rw - a b c\n2 1 0:1 / / rw - a b c");
    EXPECT_EQ(circle.mountHolding("/a"), nullptr);
}

TEST(MountTable, TellsThePathOnTheVolume) {
    const struct {
        std::string root, mountPoint, path, onVolume;
    } rows[] = {
        {"/", "/", "/a/b", "/a/b"},
        {"/", "/", "/", "/"},
        {"/", "/mnt", "/mnt/a", "/a"},
        {"/", "/mnt", "/mnt", "/"},
        {"/@home", "/home", "/home", "/@home"},
        {"/@home", "/home", "/home/u/a", "/@home/u/a"},
        {"/sub", "/", "/a", "/sub/a"},
        {"/sub", "/", "/", "/sub"},
    };
    for (const auto& row : rows) {
        Mount mount;
        mount.root = row.root;
        mount.mountPoint = row.mountPoint;
        EXPECT_EQ(pathOnVolume(mount, row.path), row.onVolume) << row.root << " at " << row.mountPoint;
    }
}

} // namespace
} // namespace veilkeep
