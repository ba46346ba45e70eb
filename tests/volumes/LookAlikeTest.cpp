#include "core/base/PathText.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Rounds.h"
#include "tests/support/RunProgram.h"
#include "tests/volumes/FollowedItem.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>

// What has the number, the name, the size and the times of an item is not therefore the item.
namespace veilkeep::test {
namespace {

using Outcome = AliasResolver::Answer::Outcome;

struct stat statusAt(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status;
}

// A loop volume, or memory.
class SomeVolume {
public:
    SomeVolume(const ScratchTree& tree, const std::string& type) {
        if (type == "tmpfs")
            m_memory = std::make_unique<PrivateMount>("memory", tree.makeDirectory("memory"), "tmpfs");
        else
            m_volume = std::make_unique<LoopVolume>(tree, type);
        m_place = m_volume ? m_volume->mountPoint() : tree.path("memory");
    }
    const std::string& whyMissing() const {
        return m_volume ? m_volume->whyMissing() : m_memory->whyMissing();
    }
    std::string path(const std::string& relative) const { return joinPath(m_place, relative); }

private:
    std::unique_ptr<LoopVolume> m_volume;
    std::unique_ptr<PrivateMount> m_memory;
    std::string m_place;
};

class InodeReuse : public testing::TestWithParam<const char*> {};

// The worst case: the number of the item that is gone, in its place or its hidden form, with its size and
// times.
TEST_P(InodeReuse, IsNeverTakenForTheItem) {
    const ScratchTree tree;
    const SomeVolume volume(tree, GetParam());
    if (!volume.whyMissing().empty())
        GTEST_SKIP() << volume.whyMissing();
    const bool isExt4 = std::string_view(GetParam()) == "ext4";
    const int count = rounds(isExt4 ? 1'000 : 200, 5'000);
    std::filesystem::create_directories(volume.path("dir/.SYS_INDEX"));
    int reused = 0, wrong = 0;
    for (int round = 0; round < count; ++round) {
        const std::string place = volume.path("dir/file"), hidden = volume.path("dir/.SYS_INDEX/elif");
        const File file = makeItem(place);
        const struct stat before = statusAt(place);
        std::filesystem::remove(place);
        const std::string imposter = round % 2 ? place : hidden;
        writeFile(imposter, "content");
        const timespec times[] = {before.st_atim, before.st_mtim};
        ASSERT_EQ(::utimensat(AT_FDCWD, imposter.c_str(), times, 0), 0);
        reused += statusAt(imposter).st_ino == before.st_ino;
        wrong += whereIs(file).outcome != Outcome::Missing;
        std::filesystem::remove(imposter);
    }
    EXPECT_EQ(wrong, 0) << "of " << count;
    if (isExt4) {
        EXPECT_GT(reused, count / 2) << "the case was to be met";
    }
}

INSTANTIATE_TEST_SUITE_P(Types, InodeReuse, testing::Values("ext4", "xfs", "btrfs", "tmpfs"),
                         [](const auto& type) { return std::string(type.param); });

class CopiedVolume : public testing::TestWithParam<std::pair<const char*, const char*>> {};

// A copy of the whole volume has the same UUID, and its items have the same marks.
TEST_P(CopiedVolume, NothingOnItIsTakenForTheItem) {
    const auto [type, options] = GetParam();
    const ScratchTree tree;
    const LoopVolume volume(tree, type);
    if (!volume.whyMissing().empty())
        GTEST_SKIP() << volume.whyMissing();
    const File staying = makeItem(volume.path("dir/staying")), hidden = makeItem(volume.path("dir/hidden")),
               moved = makeItem(volume.path("dir/moved")), gone = makeItem(volume.path("dir/gone"));
    volume.sync();
    volume.copyImage(tree.path("copy"));
    const std::string copy = tree.makeDirectory("a copy, sorted first");
    LoopVolume::mountImage(type, tree.path("copy"), "'" + copy + "'", options);
    expectFound(staying, volume.path("dir/staying"), "both mounted");
    expectFound(hidden, hide(volume.path("dir/hidden")), "hidden, both mounted");
    move(volume.path("dir/moved"), volume.path("else/where"));
    std::filesystem::remove(volume.path("dir/gone"));
    for (const File* file : {&moved, &gone}) {
        const auto answer = whereIs(*file);
        EXPECT_FALSE(answer.outcome == Outcome::Found && isSameOrBelow(answer.path, copy)) << answer.path;
    }
    ASSERT_EQ(::umount2(copy.c_str(), 0), 0);
    expectFound(moved, volume.path("else/where"), "the copy unmounted");
    expectNotFound(gone, Outcome::Missing, "the copy unmounted");
}

INSTANTIATE_TEST_SUITE_P(Types, CopiedVolume,
                         testing::Values(std::pair("ext4", ""), std::pair("xfs", "nouuid")),
                         [](const auto& type) { return std::string(type.param.first); });

class Subvolumes : public testing::Test {
protected:
    void SetUp() override {
        if (!m_volume.whyMissing().empty())
            GTEST_SKIP() << m_volume.whyMissing();
        run({"subvolume", "create", m_volume.path("sub")});
    }
    static void run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "/usr/bin/btrfs");
        const ProgramRun ran = runProgram(arguments);
        ASSERT_EQ(ran.exitStatus, 0) << ran.errors;
    }

    ScratchTree m_tree;
    LoopVolume m_volume{m_tree, "btrfs"};
};

TEST_F(Subvolumes, ItemsAreFollowedInside) {
    const File file = makeItem(m_volume.path("sub/dir/file"));
    const std::string hidden = hide(m_volume.path("sub/dir/file"));
    expectFound(file, hidden, "hidden");
    move(m_volume.path("sub/dir/.SYS_INDEX/elif"), m_volume.path("sub/far/away"));
    expectFound(file, m_volume.path("sub/far/away"), "moved");
    move(m_volume.path("sub"), m_volume.path("below/renamed"));
    expectFound(file, m_volume.path("below/renamed/far/away"), "subvolume moved");
    m_volume.unmount();
    m_volume.mountAt(m_tree.makeDirectory("alone"), "subvol=below/renamed");
    expectFound(file, m_volume.path("far/away"), "subvolume mounted alone");
}

TEST_F(Subvolumes, WhatASnapshotHoldsIsNotTheItem) {
    const File file = makeItem(m_volume.path("sub/file")), moved = makeItem(m_volume.path("sub/dir/moved"));
    run({"subvolume", "snapshot", m_volume.path("sub"), m_volume.path("a-snapshot")});
    run({"subvolume", "snapshot", "-r", m_volume.path("sub"), m_volume.path("sub/within")});
    ASSERT_EQ(statusAt(m_volume.path("a-snapshot/file")).st_ino, statusAt(m_volume.path("sub/file")).st_ino);
    move(m_volume.path("sub/dir/moved"), m_volume.path("sub/else/where"));
    expectFound(moved, m_volume.path("sub/else/where"), "moved after the snapshots");
    std::filesystem::remove(m_volume.path("sub/file"));
    expectNotFound(file, Outcome::Missing, "only the snapshots have it");
}

} // namespace
} // namespace veilkeep::test
