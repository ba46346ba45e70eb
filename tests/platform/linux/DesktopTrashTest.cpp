#include "platform/linux/DesktopTrash.h"

#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>

namespace veilkeep::test {
namespace {

TEST(DesktopTrash, LeavesAnItemWhereItsVolumeHasNone) {
    const ScratchTree tree;
    const std::string volume = tree.makeDirectory("volume");
    const PrivateMount mount("none", volume, "tmpfs", 0, "mode=755");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    const std::string path = tree.makeFile("volume/d/a", "content");
    ASSERT_EQ(::chown(tree.path("volume/d").c_str(), ordinaryUser, ordinaryUser), 0);
    ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
    EXPECT_TRUE(runInChild([&] { // GLib looks for the home directory once in a process
        becomeOrdinaryUser();    // who may not make a folder at the volume's top
        const Result<void> moved = DesktopTrash().moveToTrash(path);
        EXPECT_EQ(moved ? 0 : moved.error().systemError, ENOTSUP);
        EXPECT_EQ(readFile(path), "content");
    }));
}

} // namespace
} // namespace veilkeep::test
