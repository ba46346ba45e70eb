#include "core/tracking/VolumeIdentity.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace veilkeep {
namespace {

TEST(VolumeIdentity, IsTheUuidWhereALinkTellsIt) {
    const test::ScratchTree tree;
    const std::string device = tree.path("device");
    if (::mknod(device.c_str(), S_IFBLK | 0600, makedev(7, 3)) != 0)
        GTEST_SKIP() << "mknod: " << std::strerror(errno);
    const std::string links = tree.makeDirectory("by-uuid");
    tree.makeFile("by-uuid/no-device");
    ASSERT_EQ(::symlink("nowhere", (links + "/gone").c_str()), 0);
    ASSERT_EQ(::symlink("../device", (links + "/6f1c-22").c_str()), 0);

    const auto mount = [](unsigned int major, unsigned int minor, std::string type, std::string source) {
        return Mount{1, 0, major, minor, "/", "/m", std::move(type), std::move(source)};
    };
    const struct {
        const char* what;
        Mount mount;
        VolumeIdentity identity;
    } rows[] = {
        {"device by number", mount(7, 3, "ext4", "/dev/x"), {"6f1c-22", "ext4", ""}},
        {"device by source", mount(0, 50, "btrfs", device), {"6f1c-22", "btrfs", ""}},
        {"other device", mount(7, 4, "ext4", "/dev/x"), {"", "ext4", "/dev/x"}},
        {"source that is no device", mount(0, 50, "btrfs", links), {"", "btrfs", links}},
        {"source that is no path", mount(0, 50, "fuse.sshfs", "me@host:"), {"", "fuse.sshfs", "me@host:"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(volumeIdentityOfMount(row.mount, links), row.identity) << row.what;
    EXPECT_EQ(volumeIdentityOfMount(rows[0].mount, tree.path("missing")).source, "/dev/x");
}

} // namespace
} // namespace veilkeep
