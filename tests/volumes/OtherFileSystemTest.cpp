#include "core/base/PathText.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/volumes/FollowedItem.h"

#include <gtest/gtest.h>

#include <sys/mount.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>

// File systems that keep fewer marks: memory, layers over each other, FUSE.
namespace veilkeep::test {
namespace {

using Outcome = AliasResolver::Answer::Outcome;

TEST(Tmpfs, AnotherOfTheSameSourceIsAnotherVolume) {
    const ScratchTree tree;
    const std::string place = tree.makeDirectory("memory");
    const PrivateMount memory("memory", place, "tmpfs");
    if (!memory.whyMissing().empty())
        GTEST_SKIP() << memory.whyMissing();
    const File file = makeItem(place + "/dir/file");
    const PrivateMount onTop("memory", place, "tmpfs");
    makeItem(place + "/dir/file");
    EXPECT_NE(whereIs(file).outcome, Outcome::Found);
}

class Overlay : public testing::Test {
protected:
    void SetUp() override {
        if (!m_memory.whyMissing().empty())
            GTEST_SKIP() << m_memory.whyMissing();
        for (const char* const layer : {"lower/dir", "upper", "work"})
            std::filesystem::create_directories(m_layers + "/" + layer);
        writeFile(m_layers + "/lower/dir/below", "from below");
        writeFile(m_layers + "/lower/dir/changed", "from below");
        if (const std::string why = mountAt(m_place); !why.empty())
            GTEST_SKIP() << why;
    }
    void TearDown() override { ::umount2(m_place.c_str(), MNT_DETACH); }

    std::string mountAt(const std::string& place) {
        m_place = place;
        const std::string options =
            "lowerdir=" + m_layers + "/lower,upperdir=" + m_layers + "/upper,workdir=" + m_layers + "/work";
        const bool isDone = ::mount("layers", place.c_str(), "overlay", 0, options.c_str()) == 0;
        return isDone ? "" : std::string("mount -t overlay: ") + std::strerror(errno);
    }
    std::string path(const std::string& relative) const { return joinPath(m_place, relative); }

    ScratchTree m_tree;
    std::string m_layers = m_tree.makeDirectory("layers");
    PrivateMount m_memory{"layers", m_layers, "tmpfs"};
    std::string m_place = m_tree.makeDirectory("overlay");
};

TEST_F(Overlay, ItemsOfBothLayersAreFollowed) {
    const File below = File::initWithPath(path("dir/below")),
               changed = File::initWithPath(path("dir/changed"));
    const File above = makeItem(path("new/above")), folder = File::initWithPath(path("new"));
    expectFound(below, hide(path("dir/below")), "copied up and hidden");
    expectFound(above, hide(path("new/above")), "hidden");
    move(path("new"), path("renamed"));
    expectFound(folder, path("renamed"), "renamed");
    expectFound(above, path("renamed/.SYS_INDEX/evoba"), "parent renamed");
    writeFile(path("dir/changed"), "now in the upper layer");
    expectFound(changed, path("dir/changed"), "copied up by a change");

    ASSERT_EQ(::umount2(m_place.c_str(), 0), 0);
    expectNotFound(above, Outcome::VolumeAbsent, "unmounted");
    ASSERT_EQ(mountAt(m_tree.makeDirectory("elsewhere")), "");
    expectFound(below, path("dir/.SYS_INDEX/woleb"), "mounted elsewhere");
    expectFound(above, path("renamed/.SYS_INDEX/evoba"), "mounted elsewhere");
    std::filesystem::remove(path("dir/.SYS_INDEX/woleb"));
    makeItem(path("dir/.SYS_INDEX/woleb"), "another one");
    EXPECT_EQ(whereIs(below).outcome, Outcome::Missing);
}

class Fuse : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = enterPrivateMounts(); !why.empty())
            GTEST_SKIP() << why;
        const ProgramRun run = runProgram({"/usr/bin/bindfs", m_tree.makeDirectory("behind"), m_place});
        if (run.exitStatus != 0)
            GTEST_SKIP() << "bindfs: " << run.errors;
    }
    void TearDown() override { ::umount2(m_place.c_str(), MNT_DETACH); }

    // Times cannot be set exactly through the mount.
    void makeBehind(const std::string& path, const std::string& content,
                    std::filesystem::file_time_type time) const {
        std::filesystem::last_write_time(m_tree.makeFile("behind/" + path, content), time);
    }

    ScratchTree m_tree;
    std::string m_place = m_tree.makeDirectory("fuse");
};

TEST_F(Fuse, ItemsAreKnownByNameKindSizeAndTimes) {
    const File file = makeItem(m_place + "/dir/file", "twelve bytes");
    const File changed = makeItem(m_place + "/dir/changed", "twelve bytes");
    const File folder = File::initWithPath(m_place + "/dir");
    expectFound(file, m_place + "/dir/file", "in place");
    const std::string hidden = hide(m_place + "/dir/file");
    expectFound(file, hidden, "hidden");
    expectFound(folder, hide(m_place + "/dir"), "folder hidden");
    expectFound(file, m_place + "/.SYS_INDEX/rid/.SYS_INDEX/elif", "folder hidden");
    move(m_place + "/.SYS_INDEX/rid", m_place + "/else/where");
    expectFound(file, m_place + "/else/where/.SYS_INDEX/elif", "parent moved");
    const std::string moved = m_place + "/else/where/.SYS_INDEX/elif";
    const auto time = std::filesystem::last_write_time(moved);
    makeBehind("older/elif", "twelve bytes", time - std::chrono::hours(1));
    makeBehind("larger/file", "thirteen bytes", time);
    expectFound(file, moved, "others of the name beside");
    makeBehind("like/file", "twelve bytes", time);
    EXPECT_EQ(whereIs(file).outcome, Outcome::Missing) << "two that could be it";
    writeFile(m_place + "/else/where/changed", "of another size");
    EXPECT_EQ(whereIs(changed).outcome, Outcome::Missing) << "changed and moved, it cannot be told";
}

} // namespace
} // namespace veilkeep::test
