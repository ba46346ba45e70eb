#include "tests/worker/AdministratorFixture.h"

#include "worker/ItemDirectories.h"
#include "worker/WriteLimit.h"

#include <linux/landlock.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace veilkeep::test {
namespace {

bool kernelCanLimit() {
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) >= 2;
}

class WriteLimitTest : public AdministratorFixture {
protected:
    void SetUp() override {
        AdministratorFixture::SetUp();
        if (!IsSkipped() && !kernelCanLimit())
            GTEST_SKIP() << "the kernel has no Landlock that lets items be renamed (Linux 5.19)";
    }

    // What the call answers in a process whose writes are limited to the tree's "t": 0 or errno.
    int errorWithin(const std::function<int()>& call) const {
        const UniqueFd directory = openDirectory(m_tree.path("t"));
        const User user{ordinaryUser, ordinaryUser, m_tree.path("home")};
        const pid_t child = ::fork();
        if (child == 0) {
            limitWrites(directory.get(), user, m_inProgressFolder);
            ::_exit(call() == 0 ? 0 : errno);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(WriteLimitTest, LetsChangesHappenBelowItsDirectoriesAlone) {
    for (const char* const folder : {"t/.SYS_INDEX", "elsewhere", "home", "of user"})
        m_tree.makeDirectory(folder);
    for (const char* const folder : {"home", "of user"})
        give(m_tree.path(folder), ordinaryUser, 0700);
    const auto at = [&](const std::string& path) { return m_tree.path(path); };
    const auto rename = [&](const std::string& from, const std::string& to) {
        m_tree.makeFile(from);
        return errorWithin([&] { return ::rename(at(from).c_str(), at(to).c_str()); });
    };
    const auto make = [&](const std::string& path) {
        return errorWithin([&] { return ::mkdir(at(path).c_str(), 0700); });
    };
    const auto write = [&](const std::string& path) {
        return errorWithin([&] { return ::open(path.c_str(), O_WRONLY) < 0 ? -1 : 0; });
    };
    EXPECT_EQ(rename("t/a", "t/.SYS_INDEX/a"), 0);
    EXPECT_EQ(rename("t/.SYS_INDEX/b", "t/b"), 0);
    EXPECT_EQ(rename("elsewhere/a", "elsewhere/b"), EACCES);
    EXPECT_EQ(rename("t/c", "elsewhere/c"), EACCES);
    EXPECT_EQ(rename("elsewhere/d", "t/d"), EACCES);
    EXPECT_EQ(make("t/made"), 0);
    EXPECT_EQ(make("home/made"), 0);
    EXPECT_EQ(make("of user/InProgress"), 0); // the folder itself is still missing
    EXPECT_EQ(make("made"), EACCES);
    EXPECT_EQ(write(m_tree.makeFile("elsewhere/file")), EACCES);
    EXPECT_EQ(write("/dev/null"), 0);
}

TEST_F(WriteLimitTest, OpensNothingThatIsNotTheUsers) {
    m_tree.makeDirectory("t");
    m_tree.makeDirectory("home");
    give(m_tree.makeDirectory("of user"), ordinaryUser, 0700);
    m_tree.makeDirectory("of root");
    ASSERT_EQ(::symlink("../of root", m_inProgressFolder.c_str()), 0);
    for (const char* const folder : {"of root/made", "home/made"})
        EXPECT_EQ(errorWithin([&] { return ::mkdir(m_tree.path(folder).c_str(), 0700); }), EACCES) << folder;
}

// Of the worker itself, started as by pkexec: not without a limit because a directory was away for a moment.
// A kernel that has no Landlock is no obstacle.
TEST_F(WriteLimitTest, HoldsInTheWorkerWhereTheKernelHasIt) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    give(m_tree.makeDirectory("of user"), ordinaryUser, 0700);
    const std::vector<std::string> hide = {bundledProgram("cloakWorker"), "-p", "-i", "-hide", "-"};
    const std::string path = m_tree.makeFile("t/a.txt"), trace = m_tree.path("trace");
    const std::vector<std::string> swappedOnce = {"-o", trace, "-e", "inject=openat2:error=ELOOP:when=1"};
    expectError(runAsAdministrator(traced(swappedOnce, hide), requestFor(path)), 2);
    for (const bool isThere : {true, false}) {
        std::vector<std::string> options = {"-o", trace, "-e",
                                            "trace=landlock_create_ruleset,landlock_restrict_self,renameat2"};
        if (!isThere)
            options.insert(options.end(), {"-e", "inject=landlock_create_ruleset:error=ENOSYS"});
        expectHidden(runAsAdministrator(traced(options, hide), requestFor(path)), path);
        const std::string calls = readFile(trace);
        const std::size_t limited = calls.find("landlock_restrict_self");
        EXPECT_EQ(limited != std::string::npos && limited < calls.find("renameat2"), isThere) << calls;
        EXPECT_EQ(administrate("-unhide", hiddenPathOf(path)).output, "NewFilename: " + path);
    }
}

} // namespace
} // namespace veilkeep::test
