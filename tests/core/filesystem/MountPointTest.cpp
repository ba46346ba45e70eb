#include "core/filesystem/MountPoint.h"

#include "core/filesystem/MountTable.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace veilkeep {
namespace {

// Both ways of telling must give the same answer.
bool isMounted(const std::string& path) {
    const bool answer = isMountPoint(path);
    EXPECT_EQ(MountTable::reread()->hasMountPoint(path), answer) << path;
    return answer;
}

TEST(MountPoint, TellsMountsOfEveryKind) {
    const test::ScratchTree tree;
    const std::string directory = tree.makeDirectory("a blank\nand\\a break"), file = tree.makeFile("file");
    const std::string source = tree.makeFile("source"), link = tree.path("link");
    ASSERT_EQ(::symlink(directory.c_str(), link.c_str()), 0);
    EXPECT_FALSE(isMounted(directory));
    {
        const test::PrivateMount volume("none", directory, "tmpfs"), bound(source, file, nullptr, MS_BIND);
        if (!volume.whyMissing().empty())
            GTEST_SKIP() << volume.whyMissing();
        ASSERT_EQ(bound.whyMissing(), "");
        ASSERT_EQ(::mkdir((directory + "/inside").c_str(), 0755), 0);
        EXPECT_TRUE(isMounted(directory));
        EXPECT_TRUE(isMounted(file)) << "a bind mount on the same file system";
        for (const std::string& plain : {source, link, directory + "/inside"})
            EXPECT_FALSE(isMounted(plain)) << plain;
    }
    EXPECT_FALSE(isMounted(file));
}

TEST(MountPoint, TellsTheRootAndPlainItems) {
    const test::ScratchTree tree;
    EXPECT_TRUE(isMountPoint("/"));
    EXPECT_TRUE(isMountPoint("/proc"));
    EXPECT_FALSE(isMountPoint(tree.root()));
    EXPECT_FALSE(isMountPoint(tree.makeFile("file")));
    EXPECT_FALSE(isMountPoint(tree.path("absent")));
}

} // namespace
} // namespace veilkeep
