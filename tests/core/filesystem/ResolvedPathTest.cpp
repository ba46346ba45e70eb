#include "core/filesystem/ResolvedPath.h"

#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep {
namespace {

class ResolvedPath : public testing::Test {
protected:
    void SetUp() override {
        tree.makeDirectory("real/inner");
        ASSERT_EQ(::symlink("real", tree.path("link").c_str()), 0);
        ASSERT_EQ(::symlink("inner", tree.path("real/again").c_str()), 0);
        ASSERT_EQ(::symlink("absent", tree.path("dangling").c_str()), 0);
        ASSERT_EQ(::symlink("loop", tree.path("loop").c_str()), 0);
    }
    test::ScratchTree tree;
};

TEST_F(ResolvedPath, FollowsTheParentsLinksOnly) {
    const std::pair<std::string, std::string> rows[] = {
        {"link/x", "real/x"},
        {"link/again/x", "real/inner/x"},
        {"link/again", "real/again"},
        {"dangling", "dangling"},
        {"link/../real/x", "real/x"},
        {"link/again/..", "real/inner/.."},
        {"link/x\n\xFF", "real/x\n\xFF"},
    };
    for (const auto& [path, resolved] : rows)
        EXPECT_EQ(withResolvedParent(tree.path(path)), tree.path(resolved)) << path;
    EXPECT_EQ(withResolvedParent("/"), "/");
    EXPECT_EQ(withResolvedParent("/x"), "/x");
    for (const std::string path : {"dangling/x", "loop/x", "absent/x"})
        EXPECT_EQ(withResolvedParent(tree.path(path)), std::nullopt) << path;
    EXPECT_EQ(withResolvedParent(""), std::nullopt);
}

TEST_F(ResolvedPath, ResolvesManyPaths) {
    LinkResolver links;
    const std::pair<std::string, std::string> rows[] = {
        {"link", "real"},
        {"link/again", "real/inner"},
        {"link/again/x/y", "real/inner/x/y"},
        {"dangling/x", "dangling/x"},
        {"loop", "loop"},
        {"link/absent", "real/absent"},
    };
    for (const auto& [path, resolved] : rows)
        EXPECT_EQ(links.resolved(tree.path(path)), tree.path(resolved)) << path;
    EXPECT_EQ(links.resolved("/"), "/");
}

} // namespace
} // namespace veilkeep
