#include "core/filesystem/MountPoint.h"

#include "core/filesystem/MountTable.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace veilkeep {
namespace {

// Both ways of telling must give the same answer.
bool isMounted(const std::string& path) {
    const bool answer = isMountPoint(path);
    EXPECT_EQ(MountTable::reread()->hasMountPoint(path), answer) << path;
    return answer;
}

void expectMounts(const test::ScratchTree& tree) {
    const std::string directory = tree.makeDirectory("a blank\nand\\a break"), file = tree.makeFile("file");
    const std::string source = tree.makeFile("source"), link = tree.path("link");
    ASSERT_EQ(::symlink(directory.c_str(), link.c_str()), 0);
    EXPECT_FALSE(isMounted(directory));
    ASSERT_EQ(::mount("none", directory.c_str(), "tmpfs", 0, nullptr), 0);
    ASSERT_EQ(::mount(source.c_str(), file.c_str(), nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(::mkdir((directory + "/inside").c_str(), 0755), 0);
    EXPECT_TRUE(isMounted(directory));
    EXPECT_TRUE(isMounted(file)) << "a bind mount on the same file system";
    EXPECT_FALSE(isMounted(source));
    EXPECT_FALSE(isMounted(link));
    EXPECT_FALSE(isMounted(directory + "/inside"));
    EXPECT_EQ(::umount2(file.c_str(), MNT_DETACH), 0);
    EXPECT_FALSE(isMounted(file));
}

// In a child whose mounts nobody else sees; they go with it.
TEST(MountPoint, TellsMountsInANamespaceOfItsOwn) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root may mount";
    const test::ScratchTree tree;
    constexpr int passed = 0, failed = 1, noNamespace = 2;
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            ::_exit(noNamespace);
        expectMounts(tree);
        ::_exit(testing::Test::HasFailure() ? failed : passed);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == noNamespace)
        GTEST_SKIP() << "this container allows no mounts";
    EXPECT_EQ(WEXITSTATUS(status), passed);
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
