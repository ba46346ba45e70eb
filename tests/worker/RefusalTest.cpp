#include "tests/support/PrivateMount.h"
#include "tests/worker/WorkerFixture.h"

#include "core/base/UniqueFd.h"
#include "core/process/ChildProcess.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

// What cannot be done is refused with its number, and everything stays as it was.
class RefusalTest : public WorkerFixture {
protected:
    void expectRefused(const std::string& operation, const std::string& path, int number,
                       const RunOptions& options = {}) {
        SCOPED_TRACE(operation + " " + path);
        const auto before = withoutTimesOfFolders(snapshotOf(m_tree.path("t")));
        expectError(work(operation, path, options), number);
        EXPECT_EQ(withoutTimesOfFolders(snapshotOf(m_tree.path("t"))), before);
    }

    // A ".SYS_INDEX" that was made and removed again shows in its parent's time.
    static std::map<std::string, ItemState> withoutTimesOfFolders(std::map<std::string, ItemState> states) {
        for (auto& [path, state] : states)
            if (S_ISDIR(state.mode))
                state.modified = 0;
        return states;
    }
};

TEST_F(RefusalTest, WrongArguments) {
    const std::string worker = bundledProgram("cloakWorker");
    const std::string path = m_tree.makeFile("t/a.txt");
    const std::vector<std::string> rows[] = {
        {worker},
        {worker, "-p"},
        {worker, "-p", "-hide"},
        {worker, "-p", "-hide", "t/a.txt"},
        {worker, "-p", "-hide", "-unhide", path},
        {worker, "-p", "-delete", path},
        {worker, "-p", "-hide", path, path},
        {worker, "-p", "-w", "-hide", "-"},
        {worker, "-p", "-w", "-restore", m_tree.root()},
        {worker, "-p", "-unhide", "/"},
        {worker, "-p", "-hide", m_tree.path("t/..")},
        {worker, "-p", "-unhide", path},
        {worker, "-p", "-unhide", m_tree.path("t/.SYS_INDEX")},
    };
    for (const auto& arguments : rows) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        expectError(runProgram(arguments, {0, m_tree.root(), {}}), 1);
    }
    EXPECT_TRUE(exists(path));
    const ProgramRun quiet = runProgram({worker, "-hide", m_tree.path("t/missing")});
    EXPECT_EQ(quiet.output, "") << "printed though -p was not given";
}

TEST_F(RefusalTest, WorkerThatNobodyReleases) {
    const std::string path = m_tree.makeFile("t/a.txt");
    ChildProcessOptions held;
    held.isHeld = true;
    const std::vector<std::string> arguments = {"-p", "-w", "-hide", path};
    { const ChildProcess unwanted(bundledProgram("cloakWorker"), arguments, held); }
    EXPECT_FALSE(exists(hiddenDirectoryBeside(path)));
    ChildProcess worker(bundledProgram("cloakWorker"), arguments, held);
    EXPECT_TRUE(worker.release());
    EXPECT_EQ(worker.untilGone().output, "NewFilename: " + hiddenPathOf(path));
}

TEST_F(RefusalTest, ItemThatIsNotThereOrNotToBeHidden) {
    m_tree.makeFile("t/file");
    m_tree.makeFile("t/.SYS_INDEX/nedih.txt");
    m_tree.makeFile("t/XEDNI_SYS.");
    expectRefused("-hide", m_tree.path("t/missing"), 2);
    expectRefused("-hide", m_tree.path("t/file/below a file"), 2);
    expectRefused("-hide", m_tree.path("no folder/a"), 2);
    expectRefused("-unhide", m_tree.path("t/.SYS_INDEX/missing"), 2);
    expectRefused("-unhide", m_tree.path("no folder/.SYS_INDEX/a"), 2);
    expectRefused("-hide", m_tree.path("t/.SYS_INDEX/nedih.txt"), 4);
    expectRefused("-hide", m_tree.path("t/.SYS_INDEX"), 8);
    expectRefused("-hide", "/", 8);
    expectRefused("-hide", m_tree.home(), 8);
    expectRefused("-hide", m_tree.makeFile("home/.local/share/Veilkeep/FilesInfo.Veilkeep"), 8);
    expectRefused("-hide", m_tree.makeFile("home/.config/com.ostrel.Veilkeep.plist"), 8);
    expectRefused("-hide", "/etc/passwd", 8);
    expectRefused("-hide", m_tree.path("t/XEDNI_SYS."), 9);
}

TEST_F(RefusalTest, HiddenDirectoryThatIsNone) {
    m_tree.makeDirectory("elsewhere");
    const std::string path = m_tree.makeFile("t/a.txt");
    m_tree.makeFile("t/.SYS_INDEX");
    expectRefused("-hide", path, 5);
    expectRefused("-unhide", m_tree.path("t/.SYS_INDEX/a"), 5);
    ASSERT_EQ(::unlink(m_tree.path("t/.SYS_INDEX").c_str()), 0);
    for (const std::string& target : {m_tree.path("elsewhere"), m_tree.path("nowhere")}) {
        ASSERT_EQ(::symlink(target.c_str(), m_tree.path("t/.SYS_INDEX").c_str()), 0);
        expectRefused("-hide", path, 5);
        ASSERT_EQ(::unlink(m_tree.path("t/.SYS_INDEX").c_str()), 0);
    }
    EXPECT_EQ(snapshotOf(m_tree.path("elsewhere")).size(), 1u);
}

TEST_F(RefusalTest, PlaceThatIsTaken) {
    const std::string hidden = m_tree.makeFile("t/.SYS_INDEX/a.txt", "mine");
    const std::string path = m_tree.path("t/a.txt");
    const auto takers = {
        +[](const std::string& place) { writeFile(place, "theirs"); },
        +[](const std::string& place) { writeFile(place, {}); },
        +[](const std::string& place) { ASSERT_EQ(::mkdir(place.c_str(), 0755), 0); },
        +[](const std::string& place) { ASSERT_EQ(::symlink("nowhere", place.c_str()), 0); },
        +[](const std::string& place) { ASSERT_EQ(::symlink(".SYS_INDEX", place.c_str()), 0); },
    };
    for (const auto take : takers) {
        take(path);
        expectRefused("-unhide", hidden, 6);
        ASSERT_EQ(::remove(path.c_str()), 0);
    }
    writeFile(path, "new one");
    expectRefused("-hide", path, 6);
}

TEST_F(RefusalTest, RightsOfAnOrdinaryUser) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make items of several owners";
    const RunOptions user{ordinaryUser, {}, {}};
    const auto own = [](const std::string& path, unsigned int mode) {
        ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    };
    const std::string mine = m_tree.makeDirectory("t/mine");
    own(mine, 0755);
    own(m_tree.makeFile("t/mine/locked/a"), 0644);
    own(m_tree.path("t/mine/locked"), 0555);
    own(m_tree.makeFile("t/mine/secret"), 0);
    m_tree.makeFile("t/mine/root's file");
    m_tree.makeFile("t/mine/root's folder/a");
    m_tree.makeFile("t/theirs/a");
    m_tree.makeFile("t/sticky/a");
    ASSERT_EQ(::chmod(m_tree.path("t/sticky").c_str(), 01777), 0);
    own(m_tree.makeDirectory("t/read only"), 0755);
    own(m_tree.makeFile("t/read only/a"), 0644);
    own(m_tree.path("t/read only"), 0555);
    m_tree.makeDirectory("t/closed", 0700);

    expectRefused("-hide", m_tree.path("t/mine/locked"), 3, user);
    expectRefused("-hide", m_tree.path("t/mine/root's folder"), 3, user);
    expectRefused("-hide", m_tree.path("t/theirs/a"), 3, user);
    expectRefused("-hide", m_tree.path("t/sticky/a"), 3, user);
    expectRefused("-hide", m_tree.path("t/read only/a"), 3, user);
    expectRefused("-hide", m_tree.path("t/closed/a"), 3, user);
    for (const char* const name : {"t/mine/secret", "t/mine/root's file"}) {
        const std::string path = m_tree.path(name);
        expectHidden(work("-hide", path, user), path);
        EXPECT_EQ(work("-unhide", hiddenPathOf(path), user).output, "NewFilename: " + path);
    }
}

// In a sticky directory others may not take an item away, and no more may they when it is hidden.
TEST_F(RefusalTest, StickyDirectory) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make items of several owners";
    struct Row {
        unsigned int owner, mode;
        bool taken;
    };
    constexpr unsigned int parentsOwner = 3, stranger = 1;
    const Row rows[] = {{ordinaryUser, 01777, true}, {0, 01777, true},        {parentsOwner, 01777, true},
                        {stranger, 01777, false},    {stranger, 0777, false}, {parentsOwner, 0777, false},
                        {ordinaryUser, 0777, false}, {0, 0777, false}};
    const RunOptions user{ordinaryUser, {}, {}};
    const std::string path = m_tree.makeFile("t/a.txt"), index = hiddenDirectoryBeside(path);
    ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
    ASSERT_EQ(::chown(m_tree.path("t").c_str(), parentsOwner, parentsOwner), 0);
    ASSERT_EQ(::chmod(m_tree.path("t").c_str(), 01777), 0);
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.owner << std::oct << " " << row.mode);
        m_tree.makeFile("t/.SYS_INDEX/other"); // keeps it there
        ASSERT_EQ(::chown(index.c_str(), row.owner, row.owner), 0);
        ASSERT_EQ(::chmod(index.c_str(), row.mode), 0);
        if (!row.taken) {
            expectRefused("-hide", path, 5, user);
            continue;
        }
        expectHidden(work("-hide", path, user), path);
        ASSERT_EQ(::chown(index.c_str(), stranger, stranger), 0);
        ASSERT_EQ(::chmod(index.c_str(), 0777), 0);
        EXPECT_EQ(work("-unhide", hiddenPathOf(path), user).output, "NewFilename: " + path);
    }
}

bool setAppendOnly(const std::string& directory, bool on) {
    const UniqueFd fd(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    int flags = 0;
    if (::ioctl(fd.get(), FS_IOC_GETFLAGS, &flags) != 0)
        return false;
    flags = on ? flags | FS_APPEND_FL : flags & ~FS_APPEND_FL;
    return ::ioctl(fd.get(), FS_IOC_SETFLAGS, &flags) == 0;
}

// A ".SYS_INDEX" that was made there could not be taken away again.
TEST_F(RefusalTest, DirectoryThatTakesNewEntriesOnly) {
    const std::string path = m_tree.makeFile("t/a.txt");
    if (!setAppendOnly(m_tree.path("t"), true))
        GTEST_SKIP() << "no directory can be made append-only here";
    expectRefused("-hide", path, 3);
    ASSERT_TRUE(setAppendOnly(m_tree.path("t"), false));
}

TEST_F(RefusalTest, MountsAndFullAndReadOnlyDisks) {
    const std::string disk = m_tree.makeDirectory("t/disk");
    // 4 inodes: the root, two files and one more.
    const PrivateMount mount("none", disk, "tmpfs", 0, "size=64k,nr_inodes=4");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    m_tree.makeFile("t/disk/a.txt");
    m_tree.makeFile("t/disk/b.txt");
    m_tree.makeFile("t/disk/last inode");
    expectRefused("-hide", disk, 8);
    const std::string link = m_tree.path("t/link to it");
    ASSERT_EQ(::symlink("disk", link.c_str()), 0);
    expectHidden(work("-hide", link), link);
    expectRefused("-hide", m_tree.path("t/disk/a.txt"), 10);
    ASSERT_EQ(::unlink(m_tree.path("t/disk/last inode").c_str()), 0);

    m_tree.makeFile("t/outside");
    const PrivateMount bound(m_tree.path("t/outside"), m_tree.path("t/disk/b.txt"), nullptr, MS_BIND);
    ASSERT_EQ(bound.whyMissing(), "");
    expectRefused("-hide", m_tree.path("t/disk/b.txt"), 8);
    ASSERT_EQ(::mount("none", disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    expectRefused("-hide", m_tree.path("t/disk/a.txt"), 11);
}

// The numbers of errors that cannot easily be had from a real disk, at the calls where they would arise.
TEST_F(RefusalTest, ErrorsOfTheSystem) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    const std::string path = m_tree.makeFile("t/a.txt", "content");
    const struct {
        std::string injection;
        int number;
    } rows[] = {
        {"renameat2:error=EIO", 13},      {"renameat2:error=ENOSPC", 10},      {"renameat2:error=EDQUOT", 10},
        {"renameat2:error=EROFS", 11},    {"renameat2:error=EXDEV", 12},       {"renameat2:error=EBUSY", 12},
        {"renameat2:error=EACCES", 3},    {"renameat2:error=EPERM", 3},        {"renameat2:error=EEXIST", 6},
        {"renameat2:error=ENOTEMPTY", 6}, {"renameat2:error=ENAMETOOLONG", 9}, {"renameat2:error=EILSEQ", 9},
        {"renameat2:error=ENOMEM", 1},    {"mkdirat:error=ENOSPC", 10},        {"mkdirat:error=EMLINK", 5},
    };
    const auto before = snapshotOf(path);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.injection);
        expectError(workInjected({row.injection}, "-hide", path), row.number);
        EXPECT_EQ(snapshotOf(path), before);
        EXPECT_FALSE(exists(hiddenDirectoryBeside(path)));
    }
}

} // namespace
} // namespace veilkeep::test
