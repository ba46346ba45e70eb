#include "tests/support/HostileNames.h"
#include "tests/support/Repeated.h"
#include "tests/support/RunInChild.h"
#include "tests/worker/WorkerFixture.h"

#include "core/names/HiddenName.h"
#include "worker/ItemMover.h"

#include <grp.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <functional>

namespace veilkeep::test {
namespace {

class MoveTest : public WorkerFixture {};

TEST_F(MoveTest, EveryKindOfItemComesBackAsItWas) {
    struct Row {
        std::string name;
        std::function<void(const std::string&)> make;
    };
    const auto file = [](const std::string& path) { writeFile(path, "content\n"); };
    const auto directory = [](const std::string& path) { ASSERT_EQ(::mkdir(path.c_str(), 0750), 0); };
    const auto link = [](const std::string& target) {
        return [target](const std::string& path) { ASSERT_EQ(::symlink(target.c_str(), path.c_str()), 0); };
    };
    const Row rows[] = {
        {"report.pdf", file},
        {"empty", [](const std::string& path) { writeFile(path, {}); }},
        {"unreadable", [&](const std::string& path) { file(path), ::chmod(path.c_str(), 0); }},
        {"set-id", [&](const std::string& path) { file(path), ::chmod(path.c_str(), 06711); }},
        {"Empty Folder", directory},
        {"Folder",
         [&](const std::string& path) {
             directory(path);
             directory(path + "/inner");
             file(path + "/inner/a");
             file(path + "/.hidden");
             ASSERT_EQ(::symlink("inner/a", (path + "/link").c_str()), 0);
         }},
        {"dangling", link("nowhere")},
        {"relative link", link("report.pdf")},
        {"link to folder", link("Folder")},
        {"absolute link", link("/etc")},
        {"pipe", [](const std::string& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0640), 0); }},
        {"socket", [](const std::string& path) { ASSERT_EQ(::mknod(path.c_str(), S_IFSOCK | 0600, 0), 0); }},
        {"hard.link",
         [&](const std::string& path) {
             file(path);
             ASSERT_EQ(::link(path.c_str(), (path + " second name").c_str()), 0);
         }},
        {"attributes.txt",
         [&](const std::string& path) {
             file(path);
             const std::string value("a\0b", 3);
             if (::setxattr(path.c_str(), "user.note", value.data(), value.size(), 0) != 0)
                 std::printf("This file system keeps no extended attributes; the row goes without them.\n");
         }},
    };
    m_tree.makeDirectory("k");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = m_tree.path("k/" + row.name);
        row.make(path);
        const auto before = snapshotOf(path);
        expectHidden(work("-hide", path), path);
        EXPECT_FALSE(exists(path));
        EXPECT_EQ(snapshotOf(hiddenPathOf(path)), before);
        const ProgramRun run = work("-unhide", hiddenPathOf(path));
        EXPECT_EQ(run.output, "NewFilename: " + path);
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(snapshotOf(path), before);
        EXPECT_FALSE(exists(hiddenDirectoryBeside(path))) << "left behind, though empty";
    }
}

// Every name goes there and back to the same inode, or is refused and nothing happens.
TEST_F(MoveTest, HostileNamesAreKeptOrRefused) {
    const std::vector<std::string> names = hostileNames();
    ASSERT_GE(names.size(), 600u);
    std::size_t refused = 0;
    const std::string parent = m_tree.makeDirectory("names");
    for (const std::string& name : names) {
        SCOPED_TRACE(::testing::PrintToString(name));
        const std::string path = m_tree.makeFile("names/" + name, name);
        const auto before = snapshotOf(path);
        const ProgramRun hidden = work("-hide", path);
        if (name == ".SYS_INDEX" || refusalToHide(name) != NameRefusal::None) {
            expectError(hidden, name == ".SYS_INDEX" ? 8 : 9);
            ++refused;
        } else {
            expectHidden(hidden, path);
            EXPECT_FALSE(exists(path));
            EXPECT_EQ(work("-unhide", hiddenPathOf(path)).output, "NewFilename: " + path);
        }
        EXPECT_EQ(snapshotOf(path), before);
        EXPECT_EQ(::unlink(path.c_str()), 0);
        EXPECT_EQ(::rmdir(parent.c_str()), 0) << "something else was left in the directory";
        m_tree.makeDirectory("names");
    }
    std::printf("%zu names, of which %zu are refused\n", names.size(), refused);
    EXPECT_LT(refused, names.size() / 5);
}

TEST_F(MoveTest, UnhideNeverFailsForTheNamesSake) {
    // Names that no hide has made: their unscrambled forms could not be a file's name.
    const std::string tooLong = repeated("a\xF0\x9F\x98\x80", 37); // 257 bytes on the way back
    const std::pair<std::string, std::string> rows[] = {
        {"XEDNI_SYS.", "XEDNI_SYS."}, {tooLong, tooLong}, {"\xA9\xC3", "\xC3\xA9"}, {"txt.a", "txt.a"}};
    for (const auto& [hiddenName, visible] : rows) {
        const std::string hidden = m_tree.makeFile("foreign/.SYS_INDEX/" + hiddenName, "content");
        EXPECT_EQ(work("-unhide", hidden).output, "NewFilename: " + m_tree.path("foreign/" + visible));
    }
}

TEST_F(MoveTest, PrintedPathKeepsTheCallersSpelling) {
    m_tree.makeFile("real/a.txt");
    ASSERT_EQ(::symlink("real", m_tree.path("link").c_str()), 0);
    const std::string path = m_tree.path("link/a.txt");
    if (isRoot()) { // whose worker follows no link at all
        ASSERT_EQ(::chown(m_tree.path("real").c_str(), ordinaryUser, ordinaryUser), 0);
    }
    const RunOptions user{isRoot() ? ordinaryUser : 0, {}, {}};
    EXPECT_EQ(work("-hide", path, user).output, "NewFilename: " + m_tree.path("link/.SYS_INDEX/a.txt"));
    EXPECT_TRUE(exists(m_tree.path("real/.SYS_INDEX/a.txt")));
    EXPECT_EQ(work("-unhide", m_tree.path("link//.SYS_INDEX/a.txt/"), user).output, "NewFilename: " + path);
}

// What the parent's group may do is for no other group.
TEST_F(MoveTest, GroupOfTheHiddenDirectory) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make directories of another group";
    constexpr gid_t team = 100;
    const struct {
        unsigned int parentsMode;
        bool isMember;
        unsigned int mode;
        gid_t group;
    } rows[] = {{0775, true, 0775, team},          {0770, true, 0770, team},
                {0700, false, 0700, ordinaryUser}, {01777, false, 01777, ordinaryUser},
                {0775, false, 0755, ordinaryUser}, {0770, false, 0700, ordinaryUser},
                {0777, false, 0777, ordinaryUser}, {02775, false, 02775, team}};
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << std::oct << row.parentsMode << (row.isMember ? " member" : ""));
        const std::string path = m_tree.makeFile("team/a.txt"), parent = m_tree.path("team");
        ASSERT_EQ(::chown(parent.c_str(), ordinaryUser, team), 0);
        ASSERT_EQ(::chmod(parent.c_str(), row.parentsMode), 0);
        EXPECT_TRUE(runInChild([&] {
            ASSERT_EQ(::setgroups(row.isMember ? 1 : 0, &team), 0);
            becomeOrdinaryUser();
            ASSERT_EQ(hideItem(path).error, WorkerError::Success);
            struct stat made = {};
            ASSERT_EQ(::stat(hiddenDirectoryBeside(path).c_str(), &made), 0);
            EXPECT_EQ(made.st_mode & 07777, row.mode);
            EXPECT_EQ(made.st_gid, row.group);
            EXPECT_EQ(unhideItem(hiddenPathOf(path)).newPath, path);
        }));
    }
}

} // namespace
} // namespace veilkeep::test
