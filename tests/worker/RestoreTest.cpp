#include "tests/support/SilentSocket.h"
#include "tests/worker/WorkerFixture.h"

#include "core/environment/XdgDirectories.h"
#include "core/protocol/InProgressFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <map>

namespace veilkeep::test {
namespace {

class RestoreTest : public WorkerFixture {
protected:
    // Original paths by current paths.
    std::map<std::string, std::string> recorded() const {
        std::map<std::string, std::string> paths;
        const InProgressFolder folder(OwnPlaces::current().inProgressDirectory);
        for (const std::string& entry : folder.entries().value_or({})) {
            const auto record = recordFromDictionary(*folder.read(entry));
            EXPECT_EQ(record->action, 1);
            EXPECT_EQ(record->errorCode, 0);
            paths[record->currentPath] = record->originalPath;
        }
        return paths;
    }
};

TEST_F(RestoreTest, RecordsEveryHiddenItem) {
    m_tree.makeFile("t/plain");
    const std::pair<std::string, std::string> hidden[] = {
        {"t/.SYS_INDEX/txt.a", "t/txt.a"}, // "txt" is the base
        {"t/.SYS_INDEX/redlof", "t/folder"},
        {"t/.SYS_INDEX/redlof/.SYS_INDEX/renni", "t/folder/inner"},
        {"t/deep/er/.SYS_INDEX/\xFF", "t/deep/er/\xFF"},
    };
    std::map<std::string, std::string> expected;
    for (const auto& [current, original] : hidden) {
        current.ends_with("redlof") ? m_tree.makeDirectory(current) : m_tree.makeFile(current);
        expected[m_tree.path(current)] = m_tree.path(original);
    }
    ASSERT_EQ(::symlink("..", m_tree.path("t/deep/loop").c_str()), 0);
    const ProgramRun run = work("-restore", m_tree.path("t/"));
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, "Found: 4\nUnreadable: 0\n");
    EXPECT_EQ(recorded(), expected);
    work("-restore", m_tree.path("t"));
    EXPECT_EQ(recorded(), expected) << "a second search piled up records";
}

TEST_F(RestoreTest, GoesOnPastWhatCannotBeRead) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make what an ordinary user cannot read";
    m_tree.makeFile("t/closed/.SYS_INDEX/a");
    ASSERT_EQ(::chmod(m_tree.path("t/closed").c_str(), 0), 0);
    const std::string found = m_tree.makeFile("t/open/.SYS_INDEX/a");
    ASSERT_EQ(runProgram({"/bin/chown", "-R", "65534", m_tree.home()}).exitStatus, 0);
    const ProgramRun run = work("-restore", m_tree.path("t"), {ordinaryUser, {}, {}});
    EXPECT_EQ(run.output, "Found: 1\nUnreadable: 1\n");
    EXPECT_EQ(recorded().count(found), 1u);
    const std::string log = readFile(OwnPlaces::current().stateDirectory + "/Veilkeep.log");
    EXPECT_NE(log.find("t/closed: Permission denied"), std::string::npos) << log;
}

TEST_F(RestoreTest, WhatCannotBeDoneIsAnError) {
    m_tree.makeFile("t/.SYS_INDEX/a");
    const auto expect = [&](const std::string& path, const std::string& answer) {
        const ProgramRun run = work("-restore", path);
        EXPECT_EQ(run.output, answer) << path;
        EXPECT_EQ(run.exitStatus, 0);
    };
    expect(m_tree.path("missing"), "Error: 2");
    expect(m_tree.path("t/.SYS_INDEX/a"), "Error: 2");
    if (!isRoot())
        GTEST_SKIP() << "needs root to make a home that its user may not write";
    const ProgramRun run = work("-restore", m_tree.path("t"), {ordinaryUser, {}, {}});
    EXPECT_EQ(run.output, "Error: 3") << "the records could not be written";
}

TEST_F(RestoreTest, IsNotHeldUpByABusThatDoesNotAnswer) {
    m_tree.makeFile("t/.SYS_INDEX/a");
    ASSERT_EQ(::chdir(m_tree.root().c_str()), 0); // the address of a socket holds little
    const UniqueFd bus = listenAt("bus");
    ASSERT_TRUE(bus);
    const auto inChild = [] { ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=bus", 1); };
    const ProgramRun run = work("-restore", m_tree.path("t"), {0, m_tree.root(), inChild});
    ASSERT_EQ(::chdir("/"), 0);
    EXPECT_EQ(run.output, "Found: 1\nUnreadable: 0\n");
    EXPECT_EQ(recorded().size(), 1u);
}

TEST_F(RestoreTest, SignalsEndTheSearch) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    m_tree.makeFile("t/a/.SYS_INDEX/a");
    for (const char* const name : {"SIGTERM", "SIGHUP", "SIGINT"}) {
        SCOPED_TRACE(name);
        expectError(workInjected({std::string("getdents64:signal=") + name + ":when=1"}, "-restore",
                                 m_tree.path("t")),
                    7);
    }
}

} // namespace
} // namespace veilkeep::test
