#include "core/storage/ReplaceFile.h"

#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <set>

namespace veilkeep {
namespace {

using test::namesIn;
using test::readFile;
using test::ScratchTree;

TEST(ReplaceFile, WritesWhereThePathLeads) {
    const ScratchTree tree;
    tree.makeFile("d/old", "old", 0644);
    tree.makeDirectory("elsewhere");
    const auto link = [&](const char* text, const char* name) {
        ASSERT_EQ(::symlink(text, tree.path(name).c_str()), 0);
    };
    link("old", "d/near");
    link("../d/near", "elsewhere/chain");
    link("../elsewhere/new", "d/dangling");
    link(tree.path("elsewhere/absolute").c_str(), "d/toAbsolute");
    const std::pair<const char*, const char*> rows[] = {
        {"d/old", "d/old"},           {"d/fresh", "d/fresh"},          {"d/near", "d/old"},
        {"elsewhere/chain", "d/old"}, {"d/dangling", "elsewhere/new"}, {"d/toAbsolute", "elsewhere/absolute"},
    };
    for (const auto& [path, place] : rows) {
        const bool isLink = std::filesystem::is_symlink(tree.path(path));
        const auto replaced = replaceFile(tree.path(path), path);
        ASSERT_TRUE(replaced) << path;
        EXPECT_EQ(readFile(tree.path(place)), path);
        EXPECT_EQ(std::filesystem::is_symlink(tree.path(path)), isLink) << path;
        EXPECT_EQ(std::filesystem::status(tree.path(place)).permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write)
            << path;
    }
    EXPECT_EQ(namesIn(tree.path("d")),
              (std::set<std::string>{"old", "fresh", "near", "dangling", "toAbsolute"}));
    EXPECT_EQ(namesIn(tree.path("elsewhere")), (std::set<std::string>{"chain", "new", "absolute"}));
}

TEST(ReplaceFile, RefusesWhatIsNoFile) {
    const ScratchTree tree;
    tree.makeDirectory("directory");
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("fifo", tree.path("toFifo").c_str()), 0);
    ASSERT_EQ(::symlink("loop", tree.path("loop").c_str()), 0);
    const auto before = namesIn(tree.root());
    const std::tuple<std::string, ErrorCode, int> rows[] = {
        {tree.path("directory"), ErrorCode::NotAFile, EISDIR},
        {tree.path("fifo"), ErrorCode::NotAFile, 0},
        {tree.path("toFifo"), ErrorCode::NotAFile, 0},
        {tree.path("loop"), ErrorCode::System, ELOOP},
        {tree.path("missing/file"), ErrorCode::System, ENOENT},
        {"/", ErrorCode::NotAFile, EISDIR},
        {"", ErrorCode::System, ENOENT},
    };
    for (const auto& [path, code, systemError] : rows) {
        const auto replaced = replaceFile(path, "bytes");
        ASSERT_FALSE(replaced) << path;
        EXPECT_EQ(replaced.error().code, code) << path;
        EXPECT_EQ(replaced.error().systemError, systemError) << path;
    }
    EXPECT_EQ(namesIn(tree.root()), before);
}

void expectRefused(const std::string& path, std::string_view bytes, int systemError) {
    const std::string directory = std::filesystem::path(path).parent_path();
    const auto before = namesIn(directory);
    const auto replaced = replaceFile(path, bytes);
    ASSERT_FALSE(replaced);
    EXPECT_EQ(replaced.error().systemError, systemError);
    EXPECT_EQ(replaced.error().path, path);
    EXPECT_EQ(namesIn(directory), before);
}

TEST(ReplaceFile, LeavesTheOldFileOnAFullOrReadOnlyDisk) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can mount";
    const ScratchTree tree;
    const std::string disk = tree.makeDirectory("disk");
    EXPECT_TRUE(test::runInChild([&] {
        const test::PrivateMount mount("some", disk, "tmpfs", 0, "size=64k");
        ASSERT_EQ(mount.whyMissing(), "");
        const std::string path = tree.makeFile("disk/list", "old");
        expectRefused(path, std::string(100'000, 'n'), ENOSPC);
        EXPECT_EQ(readFile(path), "old");
        EXPECT_TRUE(replaceFile(path, std::string(1000, 'n')));
        ASSERT_EQ(::mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
        expectRefused(path, "new", EROFS);
        EXPECT_EQ(readFile(path), std::string(1000, 'n'));
    }));
}

TEST(ReplaceFile, NeedsRightsOnTheDirectoryOnly) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    const ScratchTree tree;
    tree.makeFile("closed/list", "old", 0666);
    tree.makeDirectory("closed", 0755);
    tree.makeFile("open/list", "old", 0000);
    tree.makeDirectory("open", 0777);
    EXPECT_TRUE(test::runInChild([&] {
        ASSERT_NO_FATAL_FAILURE(test::becomeOrdinaryUser());
        expectRefused(tree.path("closed/list"), "new", EACCES);
        EXPECT_TRUE(replaceFile(tree.path("open/list"), "new"));
    }));
    EXPECT_EQ(readFile(tree.path("closed/list")), "old");
    EXPECT_EQ(readFile(tree.path("open/list")), "new");
}

} // namespace
} // namespace veilkeep
