#include "core/filesystem/Directories.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace veilkeep {
namespace {

using test::modeOf;
using test::ScratchTree;

TEST(Directories, MakesWhatIsMissingAndLeavesTheRest) {
    const ScratchTree tree;
    tree.makeDirectory("there", 0755);
    ASSERT_TRUE(makeDirectories(tree.path("there/a/b//c/"), 0700));
    EXPECT_EQ(modeOf(tree.path("there")), 0755U);
    for (const char* made : {"there/a", "there/a/b", "there/a/b/c"})
        EXPECT_EQ(modeOf(tree.path(made)), 0700U) << made;
    ASSERT_EQ(::symlink("there/a", tree.path("link").c_str()), 0);
    EXPECT_TRUE(makeDirectories(tree.path("link/d"), 0700));
    EXPECT_TRUE(test::exists(tree.path("there/a/d")));
}

TEST(Directories, SaysWhatStandsInTheWay) {
    const ScratchTree tree;
    tree.makeFile("file");
    ASSERT_EQ(::symlink("nowhere", tree.path("dangling").c_str()), 0);
    const std::pair<std::string, int> rows[] = {
        {tree.path("file"), ENOTDIR},
        {tree.path("file/below"), ENOTDIR},
        {tree.path("dangling"), ENOTDIR},
        {tree.path(std::string(256, 'n')), ENAMETOOLONG},
    };
    for (const auto& [path, error] : rows) {
        const auto made = makeDirectories(path, 0700);
        ASSERT_FALSE(made) << path;
        EXPECT_EQ(made.error().systemError, error) << path;
    }
    EXPECT_FALSE(makeDirectories("", 0700));
    EXPECT_EQ(syncDirectory(tree.path("file")).error().systemError, ENOTDIR);
}

} // namespace
} // namespace veilkeep
