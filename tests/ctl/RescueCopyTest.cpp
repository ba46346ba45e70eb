#include "core/base/UniqueFd.h"
#include "tests/ctl/RescueFixture.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Strace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

class RescueCopyTest : public RescueFixture {
protected:
    // All but what every copy has anew.
    static std::map<std::string, ItemState> lasting(std::map<std::string, ItemState> items) {
        for (auto& [path, state] : items)
            state.inode = 0, state.born = 0;
        return items;
    }

    std::string snapshotText() { return ::testing::PrintToString(snapshotOf(m_tree.path("t"))); }
};

TEST_F(RescueCopyTest, KeepsWhatItCanAndChangesNothing) {
    m_tree.makeFile("t/d/folder/a", "content", 0640);
    m_tree.makeFile("t/d/folder/h", "hidden in it");
    m_tree.makeFile("t/d/folder/deep/er/z", "z", 0444);
    const std::string file = m_tree.path("t/d/folder/a");
    ASSERT_EQ(::link(file.c_str(), m_tree.path("t/d/folder/deep/second").c_str()), 0);
    ASSERT_EQ(::symlink("../nowhere", m_tree.path("t/d/folder/link").c_str()), 0);
    ASSERT_EQ(::mkfifo(m_tree.path("t/d/folder/fifo").c_str(), 0600), 0);
    const std::string sparse = m_tree.makeFile("t/d/folder/sparse", "begin");
    ASSERT_EQ(::truncate(sparse.c_str(), off_t{64} << 20), 0);
    ::setxattr(file.c_str(), "user.mark", "x", 1, 0); // where the file system has such
    if (isRoot()) {
        ASSERT_EQ(::lchown(m_tree.path("t/d/folder/link").c_str(), 1234, 55), 0);
        ASSERT_EQ(::chown(file.c_str(), 1234, 55), 0);
    }
    const timespec times[] = {{1'000, 0}, {2'000, 5}};
    for (const char* item : {"a", "link", "deep"})
        ASSERT_EQ(::utimensat(AT_FDCWD, m_tree.path("t/d/folder/" + std::string(item)).c_str(), times,
                              AT_SYMLINK_NOFOLLOW),
                  0);
    const auto expected = lasting(itemsOf("t/d"));
    hide("t/d/folder/h");
    hide("t/d/folder");
    const std::string before = snapshotText();
    const ProgramRun run = rescue({"--yes", "--to", "new/out", "t"});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(run.output, m_tree.path("new/out/d/folder") + "\n");
    EXPECT_EQ(lasting(itemsOf("new/out/d")), expected);
    EXPECT_EQ(snapshotText(), before);
    struct stat one = {}, other = {}, copied = {};
    ASSERT_EQ(::stat(m_tree.path("new/out/d/folder/a").c_str(), &one), 0);
    ASSERT_EQ(::stat(m_tree.path("new/out/d/folder/deep/second").c_str(), &other), 0);
    EXPECT_EQ(one.st_ino, other.st_ino);
    ASSERT_EQ(::stat(m_tree.path("new/out/d/folder/sparse").c_str(), &copied), 0);
    ASSERT_EQ(::stat(m_tree.path("new/out/d/folder/deep").c_str(), &other), 0);
    EXPECT_EQ(other.st_mtim.tv_sec, 2'000);
    EXPECT_LT(copied.st_blocks * 512, off_t{1} << 20);

    const ProgramRun again = rescue({"--yes", "--to", "new/out", "t/d"});
    EXPECT_EQ(again.output, m_tree.path("new/out/folder") + "\n");
    const ProgramRun third = rescue({"--yes", "--to", "new/out", "t"});
    EXPECT_EQ(third.output, m_tree.path("new/out/d/folder 2") + "\n");
    EXPECT_EQ(namesIn(m_tree.path("new/out/d")), (std::set<std::string>{"folder", "folder 2"}));
}

TEST_F(RescueCopyTest, OutOfADiskThatIsReadOnly) {
    LoopVolume disk(m_tree, "ext4");
    if (!disk.whyMissing().empty())
        GTEST_SKIP() << disk.whyMissing();
    const std::string relative = disk.mountPoint().substr(m_tree.root().size() + 1);
    m_tree.makeFile(relative + "/a.txt", "on it");
    hide(relative + "/a.txt");
    disk.unmount();
    disk.mountAt(disk.mountPoint(), "ro");
    const ProgramRun refused = rescue({"--yes", relative});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.errors,
              "veilkeepctl: " + relative +
                  ": the disk is read-only, so nothing can be moved there; with --to DIRECTORY "
                  "what is hidden is copied to another place\n");
    EXPECT_EQ(rescue({"--yes", "--to", "out", relative}).exitStatus, 0);
    EXPECT_EQ(readFile(m_tree.path("out/a.txt")), "on it");
    const ProgramRun above = rescue({"--dry-run", "."});
    EXPECT_NE(above.errors.find("/.SYS_INDEX/a.txt: The disk is read-only."), std::string::npos)
        << above.errors;
}

TEST_F(RescueCopyTest, AFullTargetTakesWhatFits) {
    m_tree.makeDirectory("out");
    const PrivateMount target("scratch", m_tree.path("out"), "tmpfs", 0, "size=1m");
    if (!target.whyMissing().empty())
        GTEST_SKIP() << target.whyMissing();
    m_tree.makeFile("t/big", std::string(std::size_t{2} << 20, 'x'));
    m_tree.makeFile("t/dir/big", std::string(std::size_t{2} << 20, 'x'));
    m_tree.makeFile("t/small", "fits");
    m_tree.makeFile("t/taken/item");
    m_tree.makeFile("out/taken");
    for (const char* item : {"t/big", "t/dir", "t/small", "t/taken/item"})
        hide(item);
    const ProgramRun run = rescue({"--yes", "--to", "out", "t"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, m_tree.path("out/small") + "\n");
    EXPECT_EQ(run.errors,
              "veilkeepctl: " + m_tree.path("t/taken/.SYS_INDEX/meti") + ": " + m_tree.path("out/taken") +
                  ": Not a directory\nveilkeepctl: " + m_tree.path("t/.SYS_INDEX/gib") +
                  ": No space left on device\nveilkeepctl: " + m_tree.path("t/.SYS_INDEX/rid/big") +
                  ": No space left on device\n"
                  "veilkeepctl: items that were copied: 1; in part: 0; not at all: 3\n");
    EXPECT_EQ(namesIn(m_tree.path("out")), (std::set<std::string>{"small", "taken"}));
}

TEST_F(RescueCopyTest, GoesOnPastWhatCannotBeRead) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make what an ordinary user cannot read";
    m_tree.makeFile("t/dir/open", "1");
    m_tree.makeFile("t/dir/closed", "2", 0600);
    hide("t/dir");
    m_tree.makeDirectory("out");
    for (const std::string& path : {m_tree.path("out"), m_tree.home()})
        ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
    const ProgramRun run = rescue({"--yes", "--to", "out", "t"}, ordinaryUser);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors, "veilkeepctl: " + m_tree.path("t/.SYS_INDEX/rid/closed") +
                              ": Permission denied\nveilkeepctl: " + m_tree.path("out/dir") +
                              ": only a part of it could be copied\n"
                              "veilkeepctl: items that were copied: 0; in part: 1; not at all: 0\n");
    EXPECT_EQ(namesIn(m_tree.path("out/dir")), (std::set<std::string>{"open"}));
}

TEST_F(RescueCopyTest, LeavesOutWhatAnUnhideThatWasCutOffHasLeft) {
    m_tree.makeFile("t/dir/.SYS_INDEX/meti", "hidden");
    m_tree.makeFile("t/dir/item", "", 0);
    m_tree.makeFile("t/dir/.SYS_INDEX/yug", "hidden as well");
    m_tree.makeFile("t/dir/guy", "no placeholder");
    hide("t/dir");
    EXPECT_EQ(rescue({"--yes", "--to", "out", "t"}).exitStatus, 0);
    EXPECT_EQ(namesIn(m_tree.path("out/dir")), (std::set<std::string>{"guy", "guy 2", "item"}));
    EXPECT_EQ(readFile(m_tree.path("out/dir/item")), "hidden");
}

TEST_F(RescueCopyTest, LeavesOutWhatASearchDoesNotEnter) {
    m_tree.makeFile("t/dir/own", "1");
    m_tree.makeDirectory("t/dir/proc");
    m_tree.makeDirectory("t/dir/disk");
    const std::string item = hide("t/dir");
    const PrivateMount disk("scratch", item + "/disk", "tmpfs");
    const PrivateMount proc("proc", item + "/proc", "proc");
    for (const PrivateMount* mount : {&disk, &proc})
        if (!mount->whyMissing().empty())
            GTEST_SKIP() << mount->whyMissing();
    m_tree.makeFile("t/.SYS_INDEX/rid/disk/file", "2");
    const std::string reason = ": another file system, which is not copied\n";
    const std::string inPart = "items that were copied: 0; in part: 1; not at all: 0\n";
    const ProgramRun all = rescue({"--yes", "--to", "all", "t"});
    EXPECT_EQ(all.errors, "veilkeepctl: " + item + "/proc" + reason +
                              "veilkeepctl: " + m_tree.path("all/dir") +
                              ": only a part of it could be copied\nveilkeepctl: " + inPart);
    EXPECT_EQ(namesIn(m_tree.path("all/dir")), (std::set<std::string>{"disk", "own"}));
    EXPECT_EQ(readFile(m_tree.path("all/dir/disk/file")), "2");
    const ProgramRun one = rescue({"--yes", "--one-file-system", "--to", "one", "t"});
    EXPECT_NE(one.errors.find("/disk" + reason), std::string::npos) << one.errors;
    EXPECT_EQ(namesIn(m_tree.path("one/dir")), std::set<std::string>{"own"});
}

// Also where folders in it have got their rights already, by which nothing in them may be changed.
TEST_F(RescueCopyTest, LeavesNothingUnfinished) {
    m_tree.makeDirectory("out");
    const PrivateMount target("scratch", m_tree.path("out"), "tmpfs", 0, "size=1m,mode=1777");
    if (!target.whyMissing().empty())
        GTEST_SKIP() << target.whyMissing();
    m_tree.makeFile("t/dir/closed/inner/file", "1");
    for (const char* closed : {"t/dir/closed/inner", "t/dir/closed"})
        ASSERT_EQ(::chmod(m_tree.path(closed).c_str(), 0555), 0);
    const std::string item = hide("t/dir"); // what it is short of comes last
    m_tree.makeFile("t/.SYS_INDEX/rid/.SYS_INDEX/gib", std::string(std::size_t{2} << 20, 'x'));
    ASSERT_EQ(::chown(m_tree.home().c_str(), ordinaryUser, ordinaryUser), 0);
    const ProgramRun run = rescue({"--yes", "--to", "out", "t"}, ordinaryUser);
    EXPECT_EQ(run.errors, "veilkeepctl: " + item +
                              "/.SYS_INDEX/gib: No space left on device\n"
                              "veilkeepctl: items that were copied: 0; in part: 0; not at all: 1\n");
    EXPECT_EQ(namesIn(m_tree.path("out")), std::set<std::string>());
}

// Half a file must not pass for the whole one, even where it cannot be taken away.
TEST_F(RescueCopyTest, LeavesNoHalfOfAFile) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    m_tree.makeFile("t/dir/bad", std::string(std::size_t{3} << 20, 'x'));
    const std::string item = hide("t/dir");
    const std::string unread = "veilkeepctl: " + item + "/bad: Input/output error\n";
    const std::string inPart = "veilkeepctl: " + m_tree.path("out/dir") +
                               ": only a part of it could be copied\n"
                               "veilkeepctl: items that were copied: 0; in part: 1; not at all: 0\n";
    const std::string notAtAll = "veilkeepctl: " + item +
                                 "/bad: Read-only file system\n"
                                 "veilkeepctl: items that were copied: 0; in part: 0; not at all: 1\n";
    const struct {
        std::vector<const char*> faults;
        std::string errors;
        std::set<std::string> left;
    } cases[] = {
        {{"pread64:error=EIO:when=2"}, unread + inPart, {"dir"}},
        {{"pread64:retval=0:when=3"}, unread + inPart, {"dir"}},
        {{"pread64:error=EIO:when=2", "unlinkat:error=EROFS:when=1"}, unread + notAtAll, {}},
    };
    for (const auto& [faults, errors, left] : cases) {
        m_tree.makeDirectory("out");
        std::vector<std::string> options = {"-o", "/dev/null", "-P", item + "/bad", "-P", "bad"};
        for (const char* const fault : faults)
            options.insert(options.end(), {"-e", std::string("inject=") + fault});
        const ProgramRun run = runProgram(
            traced(options, {bundledProgram("veilkeepctl"), "rescue", "--yes", "--to", "out", "t"}),
            {0, m_tree.root(), {}});
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(run.errors, errors);
        EXPECT_EQ(namesIn(m_tree.path("out")), left);
        EXPECT_TRUE(left.empty() || namesIn(m_tree.path("out/dir")).empty());
        std::filesystem::remove_all(m_tree.path("out"));
    }
}

// Deeper than the stack would have room for.
TEST_F(RescueCopyTest, NamesWhatLiesTooDeep) {
    m_tree.makeFile("t/dir/whole", "1");
    UniqueFd level(::open(m_tree.path("t/dir").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int depth = 0; depth < 20'000; ++depth) {
        ASSERT_EQ(::mkdirat(level.get(), "d", 0700), 0);
        level.reset(::openat(level.get(), "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    hide("t/dir");
    const ProgramRun run = rescue({"--yes", "--to", "out", "t"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(run.errors.ends_with("/d/d: File name too long\nveilkeepctl: " + m_tree.path("out/dir") +
                                     ": only a part of it could be copied\n"
                                     "veilkeepctl: items that were copied: 0; in part: 1; not at all: 0\n"))
        << run.errors.substr(0, 1000);
    EXPECT_EQ(readFile(m_tree.path("out/dir/whole")), "1");
}

// The first process of a container has the number 1 each time.
TEST_F(RescueCopyTest, LeavesAloneWhatIsUnfinishedOfOthers) {
    const std::vector<std::string> asFirst = {"/usr/bin/unshare", "--pid", "--fork"};
    std::vector<std::string> command = asFirst;
    command.emplace_back("/bin/true");
    if (!isRoot() || runProgram(command).exitStatus != 0)
        GTEST_SKIP() << "processes cannot be given numbers of their own here";
    m_tree.makeFile("t/a", "1");
    m_tree.makeFile("out/.veilkeep-copy-1/unfinished", "2");
    hide("t/a");
    command = asFirst;
    command.insert(command.end(), {bundledProgram("veilkeepctl"), "rescue", "--yes", "--to", "out", "t"});
    const ProgramRun run = runProgram(command, {0, m_tree.root(), {}});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(readFile(m_tree.path("out/.veilkeep-copy-1/unfinished")), "2");
}

} // namespace
} // namespace veilkeep::test
