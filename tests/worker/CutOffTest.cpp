#include "tests/worker/WorkerFixture.h"

#include "core/environment/XdgDirectories.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

// Moves that happened though nobody could be told leave a record; moves that were told leave none.
class CutOffTest : public WorkerFixture {
protected:
    std::string m_path = m_tree.makeFile("t/report \xFF.pdf", "content");
    std::string m_place = OwnPlaces::current().inProgressDirectory;
    InProgressFolder m_folder{m_place};

    void expectRecord(const std::string& currentPath, int action) {
        expectOnlyRecord(m_place, {m_path, currentPath, 0, action});
        EXPECT_TRUE(exists(currentPath));
    }

    void closeReader() {
        int ends[2];
        if (::pipe(ends) != 0)
            ::_exit(122);
        ::close(ends[0]);
        ::dup2(ends[1], STDOUT_FILENO);
    }
};

TEST_F(CutOffTest, LineThatCannotBeDelivered) {
    const std::function<void()> worlds[] = {
        [&] { closeReader(); },
        [] { ::close(STDOUT_FILENO); },
        [] { ::close(STDIN_FILENO), ::close(STDOUT_FILENO), ::close(STDERR_FILENO); },
        [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); },
    };
    for (const auto& inChild : worlds) {
        EXPECT_EQ(work("-hide", m_path, {0, {}, inChild}).exitStatus, 1);
        expectRecord(hiddenPathOf(m_path), 1);
        EXPECT_EQ(work("-unhide", hiddenPathOf(m_path), {0, {}, inChild}).exitStatus, 1);
        expectRecord(m_path, 0);
        EXPECT_EQ(readFile(m_path), "content");
    }
    work("-hide", m_tree.path("t/missing"), {0, {}, worlds[0]});
    EXPECT_TRUE(m_folder.entries()->empty()) << "nothing moved, so there is nothing to record";
}

TEST_F(CutOffTest, SignalDuringTheMove) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    for (const char* const name : {"SIGTERM", "SIGHUP", "SIGINT"}) {
        SCOPED_TRACE(name);
        const std::vector<std::string> injected = {std::string("renameat2:signal=") + name};
        expectHidden(workInjected(injected, "-hide", m_path), m_path);
        expectRecord(hiddenPathOf(m_path), 1);
        EXPECT_EQ(workInjected(injected, "-unhide", hiddenPathOf(m_path)).exitStatus, 1);
        expectRecord(m_path, 0);
    }
}

// A running application hears of new records on the session bus, and of nothing else.
TEST_F(CutOffTest, NoticeOnTheSessionBus) {
    if (::access("/usr/bin/dbus-run-session", X_OK) != 0)
        GTEST_SKIP() << "dbus-run-session is not installed";
    const std::string seen = m_tree.path("seen");
    const std::string worker = bundledProgram("cloakWorker");
    const std::string script = R"(
        dbus-monitor --session "type='signal',interface='com.ostrel.Veilkeep'" >"$1" &
        monitor=$!
        until grep -q NameAcquired "$1"; do :; done
        "$2" -p -hide "$3"
        "$2" -p -unhide "$4" >&-
        until grep -q rereadTempFiles "$1"; do :; done
        kill $monitor)";
    const ProgramRun run = runProgram({"/usr/bin/timeout", "30", "/usr/bin/dbus-run-session", "--", "/bin/sh",
                                       "-c", script, "sh", seen, worker, m_path, hiddenPathOf(m_path)});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    const std::string signals = readFile(seen);
    const auto first = signals.find("path=/com/ostrel/Veilkeep; interface=com.ostrel.Veilkeep; "
                                    "member=rereadTempFiles");
    ASSERT_NE(first, std::string::npos) << signals;
    EXPECT_EQ(signals.find("rereadTempFiles", first + 80), std::string::npos) << signals;
    expectRecord(m_path, 0);
}

} // namespace
} // namespace veilkeep::test
