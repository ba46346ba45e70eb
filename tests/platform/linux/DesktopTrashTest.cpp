#include "platform/linux/DesktopTrash.h"

#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>

namespace veilkeep::test {
namespace {

// In processes of their own, since GLib looks for the home directory once.
TEST(DesktopTrash, KeepsWhatFileManagersRestoreFrom) {
    const ScratchTree tree;
    const std::string trashed = tree.path("home/.local/share/Trash/");
    EXPECT_TRUE(runInChild([&] {
        DesktopTrash trash;
        for (const std::string number : {"", ".2"}) { // the same name once more
            const std::string path = tree.makeFile("d/a b\xff", "content" + number);
            EXPECT_TRUE(trash.moveToTrash(path));
            EXPECT_FALSE(exists(path));
            EXPECT_EQ(readFile(trashed + "files/a b\xff" + number), "content" + number);
            const std::string info = readFile(trashed + "info/a b\xff" + number + ".trashinfo");
            EXPECT_NE(info.find("Path=" + tree.path("d/a%20b%FF")), std::string::npos) << info;
        }
        tree.makeFile("d/folder/inside");
        EXPECT_TRUE(trash.moveToTrash(tree.path("d/folder")));
        EXPECT_TRUE(exists(trashed + "files/folder/inside"));
        const Result<void> missing = trash.moveToTrash(tree.path("d/missing"));
        EXPECT_EQ(missing ? 0 : missing.error().systemError, ENOENT);
    }));
}

TEST(DesktopTrash, LeavesAnItemWhereItsVolumeHasNone) {
    const ScratchTree tree;
    const std::string volume = tree.makeDirectory("volume");
    const PrivateMount mount("none", volume, "tmpfs", 0, "mode=755");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    const std::string path = tree.makeFile("volume/d/a", "content");
    ASSERT_EQ(::chown(tree.path("volume/d").c_str(), ordinaryUser, ordinaryUser), 0);
    ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
    EXPECT_TRUE(runInChild([&] {
        becomeOrdinaryUser(); // who may not make a folder at the volume's top
        const Result<void> moved = DesktopTrash().moveToTrash(path);
        EXPECT_EQ(moved ? 0 : moved.error().systemError, ENOTSUP);
        EXPECT_EQ(readFile(path), "content");
    }));
}

} // namespace
} // namespace veilkeep::test
