#include "tests/support/PrivateMount.h"
#include "tests/worker/WorkerFixture.h"

#include "core/tracking/HalfDoneMove.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace veilkeep::test {
namespace {

// A real file system that cannot rename without replacing: a folder shown by bindfs at another place.
class FuseTest : public WorkerFixture {
protected:
    ~FuseTest() override { unmount(); }

    // Answers why it cannot be done.
    std::string mount(const std::vector<std::string>& options) {
        if (std::string reason = enterPrivateMounts(); !reason.empty())
            return reason;
        std::vector<std::string> arguments = {"/usr/bin/bindfs"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {m_tree.makeDirectory("shown"), m_mountPoint});
        const ProgramRun run = runProgram(arguments);
        m_isMounted = run.exitStatus == 0;
        return m_isMounted ? std::string() : "bindfs cannot be mounted here: " + run.errors;
    }

    void unmount() {
        if (m_isMounted && ::umount2(m_mountPoint.c_str(), 0) != 0)
            ADD_FAILURE() << "umount2: " << std::strerror(errno);
        m_isMounted = false;
    }

    ProgramRun workKilledAt(const std::string& call, const std::string& operation, const std::string& path) {
        return workInjected({call + ":signal=KILL"}, operation, path);
    }

    void makeItems() {
        writeFile(m_file, "content");
        std::filesystem::create_directory(m_folder);
        writeFile(m_folder + "/file.txt", "content");
    }

    const std::string m_mountPoint = m_tree.makeDirectory("seen");
    const std::string m_file = m_mountPoint + "/file.txt", m_folder = m_mountPoint + "/folder";
    bool m_isMounted = false;
};

// There a placeholder looks like any folder.
TEST_F(FuseTest, TakesNothingAwayWhereModesAreNotKept) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    if (const std::string reason = mount({"--perms=0755", "-o", "attr_timeout=0"}); !reason.empty())
        GTEST_SKIP() << reason;
    makeItems();
    // A file is linked there; what that leaves can be told.
    EXPECT_EQ(workKilledAt("unlinkat:when=2", "-hide", m_file).signal, SIGKILL);
    EXPECT_TRUE(exists(m_file) && exists(hiddenPathOf(m_file)));
    const auto healedFile = healHalfDoneMove(m_file);
    EXPECT_TRUE(healedFile && *healedFile);
    EXPECT_EQ(readFile(m_file), "content");
    EXPECT_EQ(workKilledAt("renameat", "-hide", m_folder).signal, SIGKILL);
    expectError(work("-hide", m_folder), 6);
    const auto healed = healHalfDoneMove(m_folder);
    EXPECT_TRUE(healed && !*healed);
    EXPECT_EQ(readFile(m_folder + "/file.txt"), "content");
    ASSERT_EQ(::rmdir(hiddenPathOf(m_folder).c_str()), 0);
    expectHidden(work("-hide", m_folder), m_folder);
}

} // namespace
} // namespace veilkeep::test
