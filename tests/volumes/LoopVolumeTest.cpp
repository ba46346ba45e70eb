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
    // Mounts both again in the other order, each where the other was.
    static void swapPlaces(LoopVolume& first, LoopVolume& second) {
        const std::string firstPlace = first.mountPoint(), secondPlace = second.mountPoint();
        first.unmount();
        second.unmount();
        second.mountAt(firstPlace);
        first.mountAt(secondPlace);
    }

    ScratchTree m_tree;
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
    LoopVolume volume(m_tree, GetParam());
    LoopVolume other(m_tree, GetParam(), {.name = "other"});
    for (const LoopVolume* one : {&volume, &other})
        if (!one->whyMissing().empty())
            GTEST_SKIP() << one->whyMissing();
    const File file = makeItem(volume.path("home/file.txt"));
    const File inner = makeItem(volume.path("home/folder/inner"));
    const File folder = File::initWithPath(volume.path("home/folder"));
    makeItem(other.path("house/unlike"));
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
        take(step, volume);
        for (const char* const when : {"in place", "mounted elsewhere"}) {
            const std::string moment = std::string(step.from) + " " + when;
            expectFound(file, volume.path(step.file), moment);
            expectFound(folder, volume.path(step.folder), moment);
            expectFound(inner, volume.path(step.inner), moment);
            swapPlaces(volume, other);
        }
    }
}

TEST_P(LoopVolumeTest, TwoVolumesThatLookAlikeAreToldApart) {
    LoopVolume volume(m_tree, GetParam());
    LoopVolume other(m_tree, GetParam(), {.name = "other"});
    for (const LoopVolume* one : {&volume, &other})
        if (!one->whyMissing().empty())
            GTEST_SKIP() << one->whyMissing();
    const File file = makeItem(volume.path("dir/file")), otherFile = makeItem(other.path("dir/file"));
    swapPlaces(volume, other);
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, volume.path("dir/file")}));
    EXPECT_EQ(whereIs(otherFile), (AliasResolver::Answer{Outcome::Found, other.path("dir/file")}));
    hide(volume.path("dir/file"));
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, volume.path("dir/.SYS_INDEX/elif")}));
    std::filesystem::remove(other.path("dir/file"));
    EXPECT_EQ(whereIs(otherFile).outcome, Outcome::Missing) << "the other volume's file is at its place";
}

TEST_P(LoopVolumeTest, AnAbsentVolumeIsNoMissingItem) {
    LoopVolume volume(m_tree, GetParam());
    if (!volume.whyMissing().empty())
        GTEST_SKIP() << volume.whyMissing();
    const File file = makeItem(volume.path("dir/file")), gone = makeItem(volume.path("gone"));
    std::filesystem::remove(volume.path("gone"));
    expectNotFound(gone, Outcome::Missing, "mounted");
    const std::string place = volume.mountPoint();
    volume.unmount();
    expectNotFound(file, Outcome::VolumeAbsent, "unmounted");
    expectNotFound(gone, Outcome::VolumeAbsent, "unmounted");
    makeItem(place + "/dir/file");
    expectNotFound(file, Outcome::VolumeAbsent, "unmounted, and another file in its place");
    volume.mountAt(m_tree.makeDirectory("elsewhere"));
    EXPECT_EQ(whereIs(file), (AliasResolver::Answer{Outcome::Found, volume.path("dir/file")}));
}

TEST_P(LoopVolumeTest, APartMountedElsewhereIsEnough) {
    LoopVolume volume(m_tree, GetParam());
    if (!volume.whyMissing().empty())
        GTEST_SKIP() << volume.whyMissing();
    const File file = makeItem(volume.path("part/dir/file")), outside = makeItem(volume.path("outside"));
    const File movedAway = makeItem(volume.path("part/moved"));
    const std::string part = m_tree.makeDirectory("only a part");
    ASSERT_EQ(::mount(volume.path("part").c_str(), part.c_str(), nullptr, MS_BIND, nullptr), 0);
    expectFound(file, volume.path("part/dir/file"), "both mounted");
    volume.unmount();
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
