#include "tests/support/LoopVolume.h"
#include "tests/volumes/FollowedItem.h"

#include "core/base/PathText.h"

#include <gtest/gtest.h>

#include <sys/mount.h>

#include <filesystem>

// Records of items on disk file systems stay true while items and volumes move.
namespace veilkeep::test {
namespace {

using Outcome = AliasResolver::Answer::Outcome;

class LoopVolumeTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        for (const LoopVolume* one : {&m_volume, &m_other})
            if (!one->whyMissing().empty())
                GTEST_SKIP() << one->whyMissing();
    }

    // Mounts both again in the other order, each where the other was.
    void swapPlaces() {
        const std::string firstPlace = m_volume.mountPoint(), secondPlace = m_other.mountPoint();
        m_volume.unmount();
        m_other.unmount();
        m_other.mountAt(firstPlace);
        m_volume.mountAt(secondPlace);
    }

    ScratchTree m_tree;
    LoopVolume m_volume{m_tree, GetParam()};
    LoopVolume m_other{m_tree, GetParam(), {.name = "other"}};
};

struct Step {
    enum Kind { Hide, Unhide, Move } kind;
    const char* from;
    const char* to; // of a move
    const char *file, *folder, *inner;
};

void take(const Step& step, const LoopVolume& volume) {
    switch (step.kind) {
    case Step::Hide:
        hide(volume.path(step.from));
        return;
    case Step::Unhide:
        unhide(volume.path(step.from));
        return;
    case Step::Move:
        move(volume.path(step.from), volume.path(step.to));
        return;
    }
}

TEST_P(LoopVolumeTest, RecordsFollowTheirItems) {
    const File file = makeItem(m_volume.path("home/file.txt"));
    const File inner = makeItem(m_volume.path("home/folder/inner"));
    const File folder = File::initWithPath(m_volume.path("home/folder"));
    makeItem(m_other.path("house/unlike"));
    const Step steps[] = {
        {Step::Hide, "home/file.txt", "", "home/.SYS_INDEX/elif.txt", "home/folder", "home/folder/inner"},
        {Step::Move, "home", "house", "house/.SYS_INDEX/elif.txt", "house/folder", "house/folder/inner"},
        {Step::Hide, "house/folder", "", "house/.SYS_INDEX/elif.txt", "house/.SYS_INDEX/redlof",
         "house/.SYS_INDEX/redlof/inner"},
        {Step::Move, "house/.SYS_INDEX/elif.txt", "far/away/.SYS_INDEX/elif.txt",
         "far/away/.SYS_INDEX/elif.txt", "house/.SYS_INDEX/redlof", "house/.SYS_INDEX/redlof/inner"},
        {Step::Unhide, "far/away/.SYS_INDEX/elif.txt", "", "far/away/file.txt", "house/.SYS_INDEX/redlof",
         "house/.SYS_INDEX/redlof/inner"},
        {Step::Move, "house/.SYS_INDEX/redlof", "far/shown", "far/away/file.txt", "far/shown",
         "far/shown/inner"},
        {Step::Move, "far/away/file.txt", "renamed", "renamed", "far/shown", "far/shown/inner"},
        {Step::Hide, "far", "", "renamed", ".SYS_INDEX/raf/shown", ".SYS_INDEX/raf/shown/inner"},
    };
    for (const Step& step : steps) {
        take(step, m_volume);
        for (const char* const when : {"in place", "mounted elsewhere"}) {
            const std::string moment = std::string(step.from) + " " + when;
            expectFound(file, m_volume.path(step.file), moment);
            expectFound(folder, m_volume.path(step.folder), moment);
            expectFound(inner, m_volume.path(step.inner), moment);
            swapPlaces();
        }
    }
}

TEST_P(LoopVolumeTest, TwoVolumesThatLookAlikeAreToldApart) {
    const File file = makeItem(m_volume.path("dir/file")), otherFile = makeItem(m_other.path("dir/file"));
    swapPlaces();
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, m_volume.path("dir/file")}));
    EXPECT_EQ(whereIs(otherFile), (AliasResolver::Answer{Outcome::Found, m_other.path("dir/file")}));
    hide(m_volume.path("dir/file"));
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, m_volume.path("dir/.SYS_INDEX/elif")}));
    std::filesystem::remove(m_other.path("dir/file"));
    EXPECT_EQ(whereIs(otherFile).outcome, Outcome::Missing) << "the other volume's file is at its place";
}

TEST_P(LoopVolumeTest, AnAbsentVolumeIsNoMissingItem) {
    const File file = makeItem(m_volume.path("dir/file")), gone = makeItem(m_volume.path("gone"));
    std::filesystem::remove(m_volume.path("gone"));
    expectNotFound(gone, Outcome::Missing, "mounted");
    const std::string place = m_volume.mountPoint();
    m_volume.unmount();
    expectNotFound(file, Outcome::VolumeAbsent, "unmounted");
    expectNotFound(gone, Outcome::VolumeAbsent, "unmounted");
    makeItem(place + "/dir/file");
    expectNotFound(file, Outcome::VolumeAbsent, "unmounted, and another file in its place");
    m_volume.mountAt(m_tree.makeDirectory("elsewhere"));
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, m_volume.path("dir/file")}));
}

TEST_P(LoopVolumeTest, APartMountedElsewhereIsEnough) {
    const File file = makeItem(m_volume.path("part/dir/file")), outside = makeItem(m_volume.path("outside"));
    const File movedAway = makeItem(m_volume.path("part/moved"));
    const std::string part = m_tree.makeDirectory("only a part");
    ASSERT_EQ(::mount(m_volume.path("part").c_str(), part.c_str(), nullptr, MS_BIND, nullptr), 0);
    expectFound(file, m_volume.path("part/dir/file"), "both mounted");
    m_volume.unmount();
    expectFound(file, part + "/dir/file", "the part alone");
    const std::string hidden = hide(part + "/dir/file");
    expectFound(file, hidden, "hidden there");
    move(part + "/moved", part + "/new/name");
    expectFound(movedAway, part + "/new/name", "moved there");
    expectNotFound(outside, Outcome::VolumeAbsent, "outside of the part");
    ASSERT_EQ(::umount2(part.c_str(), 0), 0);
}

INSTANTIATE_TEST_SUITE_P(Types, LoopVolumeTest, testing::Values("ext4", "xfs", "btrfs"),
                         [](const auto& type) { return std::string(type.param); });

} // namespace
} // namespace veilkeep::test
