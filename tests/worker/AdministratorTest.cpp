#include "tests/worker/AdministratorFixture.h"

#include "tests/support/PrivateMount.h"
#include "worker/RequestInput.h"

#include <signal.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>

namespace veilkeep::test {
namespace {

class AdministratorTest : public AdministratorFixture {
protected:
    void SetUp() override {
        AdministratorFixture::SetUp();
        if (IsSkipped())
            return;
        m_path = m_tree.makeFile("t/report.pdf", "content");
        give(m_tree.path("t"), ordinaryUser, 0755);
        give(m_tree.makeDirectory("of user"), ordinaryUser, 0700);
    }

    void expectRefused(const ProgramRun& run, int number, const std::string& path) {
        expectError(run, number);
        EXPECT_EQ(run.errors, "");
        EXPECT_TRUE(exists(path));
    }

    std::string m_path;
};

TEST_F(AdministratorTest, MakesNothingForMoreThanTheParentIsFor) {
    const struct {
        const char* name;
        unsigned int owner, mode;
    } rows[] = {{"user's", ordinaryUser, 0755},
                {"locked", ordinaryUser, 0555},
                {"shut", ordinaryUser, 0},
                {"root's", 0, 0755},
                {"closed", 0, 0700},
                {"another's", 1, 02775},
                {"everybody's", 0, 01777}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string folder = m_tree.makeDirectory("t/" + std::string(row.name) + "/folder");
        const std::string parent(parentPath(folder));
        give(parent, row.owner, row.mode);
        const auto before = snapshotOf(folder);
        const ProgramRun hidden = administrate("-hide", folder);
        expectHidden(hidden, folder);
        EXPECT_EQ(hidden.errors, "");
        struct stat above = {}, made = {};
        ASSERT_EQ(::stat(parent.c_str(), &above), 0);
        ASSERT_EQ(::stat(hiddenDirectoryBeside(folder).c_str(), &made), 0);
        EXPECT_EQ(made.st_mode, above.st_mode);
        EXPECT_EQ(made.st_uid, above.st_uid);
        EXPECT_EQ(made.st_gid, above.st_gid);
        EXPECT_EQ(snapshotOf(hiddenPathOf(folder)), before);
        EXPECT_EQ(administrate("-unhide", hiddenPathOf(folder)).output, "NewFilename: " + folder);
        EXPECT_EQ(snapshotOf(folder), before);
        EXPECT_FALSE(exists(hiddenDirectoryBeside(folder)));
    }
    EXPECT_FALSE(exists(m_inProgressFolder)) << "what was told needs no record";
}

// What the mode says of the group is then what another user in the list may do.
TEST_F(AdministratorTest, MakesNothingForMoreThanAnAccessListAllows) {
    const struct {
        const char* list;
        mode_t mode; // with the group's rights alone
    } rows[] = {{"u:2:rwx", 0755}, {"g::-,u:2:rwx", 0705}, {"g::rwx,u:2:rwx,m::rwx", 0775}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.list);
        const std::string path = m_tree.makeFile(std::string("t/") + row.list + "/a.txt");
        const std::string parent(parentPath(path)), index = hiddenDirectoryBeside(path);
        give(parent, 1, 0755);
        if (runProgram({"/usr/bin/setfacl", "-m", row.list, parent}).exitStatus != 0)
            GTEST_SKIP() << "no access lists can be set here";
        expectHidden(administrate("-hide", path), path);
        struct stat made = {};
        ASSERT_EQ(::stat(index.c_str(), &made), 0);
        EXPECT_EQ(made.st_mode & 07777, row.mode);

        // One that was made for what the mode says is not trusted.
        ASSERT_EQ(::chmod(index.c_str(), 0775), 0);
        const ProgramRun back = administrate("-unhide", hiddenPathOf(path));
        if (row.mode == 0775)
            EXPECT_EQ(back.output, "NewFilename: " + path);
        else
            expectRefused(back, 5, hiddenPathOf(path));
    }
}

// Whoever is taken out of the parent's list stays in the one that was inherited before.
TEST_F(AdministratorTest, BelievesNoAccessListThatTheParentHasNoMore) {
    const std::string path = m_tree.makeFile("t/shared/a.txt"), parent(parentPath(path));
    give(parent, 1, 0775);
    if (runProgram({"/usr/bin/setfacl", "-m", "u:2:rwx,d:u:2:rwx", parent}).exitStatus != 0)
        GTEST_SKIP() << "no access lists can be set here";
    expectHidden(administrate("-hide", path), path);
    EXPECT_EQ(administrate("-unhide", hiddenPathOf(path)).output, "NewFilename: " + path);
    expectHidden(administrate("-hide", path), path);
    ASSERT_EQ(runProgram({"/usr/bin/setfacl", "-b", parent}).exitStatus, 0);
    expectRefused(administrate("-unhide", hiddenPathOf(path)), 5, hiddenPathOf(path));
}

TEST_F(AdministratorTest, InputOfAnotherForm) {
    const std::string request = requestFor(m_path), folder = m_inProgressFolder + '\0';
    const std::string rows[] = {
        "",
        m_path,
        m_path + '\0',
        request.substr(0, request.size() - 1),
        request + "x",
        request + '\0',
        m_path + '\0' + '\0' + folder,
        '\0' + request,
        '\0' + folder,
        m_path + '\0' + '\0',
        m_path.substr(1) + '\0' + folder,
        m_tree.path("t/../t/report.pdf") + '\0' + folder,
        m_tree.path("t/./report.pdf") + '\0' + folder,
        m_tree.path("t//report.pdf") + '\0' + folder,
        m_path + "/" + '\0' + folder,
        "/" + request,
        m_path + '\0' + "InProgress" + '\0',
        m_path + '\0' + m_tree.path("of user/../InProgress") + '\0',
        m_path + '\0' + "/" + std::string(RequestInput::maximumSize, 'x') + '\0',
    };
    const std::vector<std::string> hide = {bundledProgram("cloakWorker"), "-p", "-i", "-hide", "-"};
    for (const std::string& input : rows) {
        SCOPED_TRACE(::testing::PrintToString(input.substr(0, 200)));
        expectRefused(runAsAdministrator(hide, input), 1, m_path);
    }
    expectRefused(runAsAdministrator(hide, request, [] { ::close(STDIN_FILENO); }), 1, m_path);
    std::string longest; // clean, and of as many parts as can be
    while (longest.size() + folder.size() + 3 <= RequestInput::maximumSize)
        longest += "/a";
    expectRefused(runAsAdministrator(hide, longest + '\0' + folder), 2, m_path);
    const auto nobodyToTell = [] { ::close(STDOUT_FILENO); };
    longest.resize((longest.size() - m_path.size()) / 2 * 2);
    const ProgramRun run = runAsAdministrator(hide, m_path + '\0' + longest + "/a" + '\0', nobodyToTell);
    EXPECT_EQ(run.signal, 0);
    EXPECT_TRUE(exists(hiddenPathOf(m_path)));
    EXPECT_EQ(namesIn(m_tree.path("of user")).size(), 0u);
}

// The input may come in pieces, and need not come at all.
TEST(RequestInput, CallerThatNeverCloses) {
    std::array<int, 2> ends = {-1, -1};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const UniqueFd reader(ends[0]);
    UniqueFd writer(ends[1]);
    const std::string request("/a\0/b\0", 6);
    ASSERT_EQ(::write(writer.get(), request.data(), request.size()), 6);
    EXPECT_FALSE(RequestInput::read(reader.get(), std::chrono::milliseconds(20)));
    ASSERT_EQ(::write(writer.get(), request.data(), request.size()), 6);
    writer.reset();
    const auto input = RequestInput::read(reader.get());
    ASSERT_TRUE(input);
    EXPECT_EQ(input->path + ":" + input->inProgressFolder, "/a:/b");
}

TEST_F(AdministratorTest, RightsAreForOneUserAndOneForm) {
    const std::string worker = bundledProgram("cloakWorker");
    const struct {
        const char* askedBy;
        std::vector<std::string> arguments;
    } rows[] = {
        {nullptr, {worker, "-p", "-hide", "-"}},         {"", {worker, "-p", "-hide", "-"}},
        {"nobody", {worker, "-p", "-hide", "-"}},        {" 65534", {worker, "-p", "-hide", "-"}},
        {"065534", {worker, "-p", "-hide", "-"}},        {"-1", {worker, "-p", "-hide", "-"}},
        {"4294967295", {worker, "-p", "-hide", "-"}},    {"3999999998", {worker, "-p", "-hide", "-"}},
        {"65534", {worker, "-p", "-hide", m_path}},      {"nobody", {worker, "-p", "-hide", m_path}},
        {"65534", {worker, "-p", "-restore", m_path}},   {"65534", {worker, "-p", "-restore", "-"}},
        {nullptr, {worker, "-p", "-restore", "-"}},      {"65534", {worker, "-p", "-hide", "-", "-"}},
        {"65534", {worker, "-p", "-hide", "-", m_path}}, {"65534", {worker, "-p", "-rescue", m_path}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments) + (row.askedBy ? row.askedBy : " by nobody"));
        const auto inChild = [&] {
            row.askedBy ? ::setenv("PKEXEC_UID", row.askedBy, 1) : ::unsetenv("PKEXEC_UID");
        };
        expectRefused(runAsAdministrator(row.arguments, requestFor(m_path), inChild), 1, m_path);
        // Not even a log of root's where nobody can be told.
        if (row.askedBy)
            runAsAdministrator(row.arguments, requestFor(m_path), [&] { inChild(), ::close(STDOUT_FILENO); });
        EXPECT_FALSE(exists(m_tree.path("home/.local")));
    }
}

TEST_F(AdministratorTest, HiddenDirectoryThatOthersCouldUse) {
    const struct {
        unsigned int parentsOwner, parentsMode, owner, mode;
        bool taken;
    } rows[] = {
        {1, 0755, 1, 0755, true},  {1, 0755, 0, 0755, true},    {1, 0755, ordinaryUser, 0755, true},
        {1, 0775, 1, 0775, true},  {0, 01777, 0, 01777, true},  {0, 01777, ordinaryUser, 0755, true},
        {1, 0755, 2, 0755, false}, {0, 01777, 2, 01777, false}, {1, 0755, 1, 0775, false},
        {1, 0775, 1, 0777, false}, {1, 0755, 1, 0757, false},   {0, 01777, 0, 0777, false},
        {1, 0700, 0, 0700, false}, // root's own secrets
        {1, 0775, 0, 0775, false}, // writable for another group
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.parentsOwner << std::oct << " " << row.parentsMode << " "
                                          << row.owner << " " << row.mode);
        const std::string index = m_tree.makeDirectory("t/.SYS_INDEX");
        give(index, row.owner, row.mode);
        give(m_tree.path("t"), row.parentsOwner, row.parentsMode);
        const ProgramRun run = administrate("-hide", m_path);
        if (row.taken) {
            expectHidden(run, m_path);
            EXPECT_EQ(administrate("-unhide", hiddenPathOf(m_path)).output, "NewFilename: " + m_path);
        } else {
            expectRefused(run, 5, m_path);
            const std::string hidden = m_tree.makeFile("t/.SYS_INDEX/a.txt");
            expectRefused(administrate("-unhide", hidden), 5, hidden);
            ASSERT_EQ(::unlink(hidden.c_str()), 0);
            ASSERT_EQ(::rmdir(index.c_str()), 0);
        }
    }
}

TEST_F(AdministratorTest, FollowsNoLinkAndHidesNothingProtected) {
    ASSERT_EQ(::symlink("t", m_tree.path("link").c_str()), 0);
    m_tree.makeFile("t/.SYS_INDEX/a.txt");
    expectRefused(administrate("-hide", m_tree.path("link/report.pdf")), 2, m_path);
    expectRefused(administrate("-unhide", m_tree.path("link/.SYS_INDEX/a.txt")), 2,
                  m_tree.path("t/.SYS_INDEX/a.txt"));
    expectRefused(administrate("-hide", "/"), 8, "/");
    expectRefused(administrate("-hide", "/etc/passwd"), 8, "/etc/passwd");
    expectRefused(administrate("-hide", "/root"), 8, "/root");

    // The home that counts is the one in the user database.
    const std::string home = m_tree.makeDirectory("the home"), documents = home + "/Documents";
    m_tree.makeDirectory("the home/Documents");
    const std::string desk = m_tree.makeDirectory("the home/desk");
    m_tree.makeFile("the home/.config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/desk\"\n");
    const std::string users =
        m_tree.makeFile("passwd", "root:x:0:0::/root:\nnobody:x:65534:65534::" + home + ":\n");
    const PrivateMount standIn(users, "/etc/passwd", nullptr, MS_BIND);
    if (!standIn.whyMissing().empty())
        GTEST_SKIP() << standIn.whyMissing();
    for (const std::string& path : {home, documents, desk})
        expectRefused(administrate("-hide", path, [] { ::setenv("HOME", "/elsewhere", 1); }), 8, path);
    // A file that the user himself may not read is not read for him.
    give(m_tree.path("the home/.config/user-dirs.dirs"), 0, 0600);
    expectHidden(administrate("-hide", desk), desk);
}

TEST_F(AdministratorTest, NothingAroundItDoesHarm) {
    const std::function<void()> worlds[] = {
        [] { ::close(STDERR_FILENO); },
        [&] {
            for (const char* const name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME",
                                           "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS", "TMPDIR"})
                ::setenv(name, m_tree.path("t/report.pdf").c_str(), 1);
        },
        [] { ::setenv("LD_LIBRARY_PATH", "/nowhere", 1), ::setenv("LANG", "../../x", 1); },
        [] {
            const rlimit large = {RLIM_INFINITY, RLIM_INFINITY};
            if (::setrlimit(RLIMIT_STACK, &large) != 0)
                ::_exit(122);
            // The system takes 6 MiB in all, in pieces of 128 KiB.
            for (int number = 0; number < 50; ++number)
                ::setenv(("LARGE_" + std::to_string(number)).c_str(), std::string(120'000, 'x').c_str(), 1);
        },
        [&] {
            const std::string gone = m_tree.makeDirectory("gone");
            if (::chdir(gone.c_str()) != 0 || ::rmdir(gone.c_str()) != 0)
                ::_exit(122);
        },
    };
    for (const auto& inChild : worlds) {
        SCOPED_TRACE(&inChild - worlds);
        const ProgramRun hidden = administrate("-hide", m_path, inChild);
        expectHidden(hidden, m_path);
        EXPECT_EQ(hidden.errors, "");
        EXPECT_EQ(administrate("-unhide", hiddenPathOf(m_path), inChild).output, "NewFilename: " + m_path);
    }
    const auto withoutArguments = [] {
        std::array<char*, 1> none = {nullptr};
        ::execv(bundledProgram("cloakWorker").c_str(), none.data());
    };
    expectRefused(administrate("-hide", m_path, withoutArguments), 1, m_path);
}

class AdministratorCutOffTest : public AdministratorTest {
protected:
    static void nobodyReads() { ::dup2(::open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); }

    ProgramRun hideInjected(
        const std::string& injection, const std::function<void()>& inChild = [] {}) const {
        return runAsAdministrator(traced({"-f", "-o", m_tree.path("calls"), "-e", "inject=" + injection},
                                         {bundledProgram("cloakWorker"), "-p", "-i", "-hide", "-"}),
                                  requestFor(m_path), inChild);
    }

    void expectRecord(const std::string& currentPath, int action) {
        struct stat status = {};
        ASSERT_EQ(::lstat(m_inProgressFolder.c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, ordinaryUser);
        for (const std::string& name : namesIn(m_inProgressFolder)) {
            ASSERT_EQ(::lstat(joinPath(m_inProgressFolder, name).c_str(), &status), 0);
            EXPECT_EQ(status.st_uid, ordinaryUser);
            EXPECT_EQ(status.st_mode & 07777, 0600u);
        }
        expectOnlyRecord(m_inProgressFolder, {m_path, currentPath, 0, action});
    }
};

TEST_F(AdministratorCutOffTest, RecordIsTheUsersOwn) {
    EXPECT_EQ(administrate("-hide", m_path, nobodyReads).exitStatus, 1);
    expectRecord(hiddenPathOf(m_path), 1);
    EXPECT_EQ(administrate("-unhide", hiddenPathOf(m_path), nobodyReads).exitStatus, 1);
    expectRecord(m_path, 0);

    // Where he may not write, nobody does for him.
    for (const char* const name : {"roots", "link/below"}) {
        give(m_tree.makeDirectory("roots"), 0, 0755);
        ::symlink("roots", m_tree.path("link").c_str());
        m_inProgressFolder = m_tree.path(name);
        EXPECT_EQ(administrate("-hide", m_path, nobodyReads).exitStatus, 1);
        EXPECT_EQ(namesIn(m_tree.path("roots")).size(), 0u);
        EXPECT_EQ(administrate("-unhide", hiddenPathOf(m_path)).exitStatus, 1);
    }
}

TEST_F(AdministratorCutOffTest, SignalDuringTheMove) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    expectHidden(hideInjected("renameat2:signal=SIGTERM"), m_path);
    expectRecord(hiddenPathOf(m_path), 1);
    const std::string trace = readFile(m_tree.path("calls"));
    const auto given = trace.find("setresuid(65534, 65534, 65534)");
    ASSERT_NE(given, std::string::npos) << trace;
    EXPECT_LT(given, std::min(trace.find("O_CREAT"), trace.find(" mkdir(")))
        << "something was made with root's rights";
    EXPECT_NE(trace.find("setgroups(1, [65534])"), std::string::npos);
}

// A system that does not let go of the rights gets no record written with them.
TEST_F(AdministratorCutOffTest, RightsThatStayWriteNothing) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    for (const char* const call : {"setgroups:retval=0", "setresuid:retval=0", "setresgid:retval=0",
                                   "setresuid:error=EAGAIN", "setgroups:error=EPERM"}) {
        SCOPED_TRACE(call);
        EXPECT_EQ(hideInjected(call, nobodyReads).exitStatus, 1);
        EXPECT_EQ(administrate("-unhide", hiddenPathOf(m_path)).exitStatus, 1);
        EXPECT_FALSE(exists(m_inProgressFolder));
    }
}

// An ordinary user may hand over a path in the same way.
TEST_F(AdministratorTest, OrdinaryUserNeedsNoRights) {
    const std::string request = m_tree.makeFile("request", requestFor(m_path));
    const RunOptions options{ordinaryUser, "/", [&] {
                                 ::dup2(::open(request.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
                                 ::setenv("PKEXEC_UID", "0", 1);
                             }};
    expectHidden(work("-hide", "-", options), m_path);
}

} // namespace
} // namespace veilkeep::test
