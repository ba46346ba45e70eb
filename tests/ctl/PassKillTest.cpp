#include "core/environment/XdgDirectories.h"
#include "core/names/HiddenName.h"
#include "filelist/FilesInfoFile.h"
#include "groups/AutoHideMark.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/Rounds.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"
#include "tests/worker/TracedCall.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace veilkeep::test {
namespace {

using Words = std::vector<std::string>;

// Kills veilkeepctl in the midst of a pass over AutoHide groups, right before system calls that concern the
// lists, the mark or a hidden directory; the worker that it waited for goes on. The next start of the service
// without a window hides what is out, and the list says so.
class PassKillTest : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (runProgram({"/usr/bin/strace", "-o", "/dev/null", "/bin/true"}).exitStatus != 0)
            GTEST_SKIP() << "strace cannot trace here";
        ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0); // workers that are left are this process' children
        ASSERT_EQ(ctl({"group", "add", "Leaving"}).exitStatus, 0);
        for (int number = 0; number < 5; ++number) {
            m_items.push_back(m_tree.makeFile("t/item" + std::to_string(number), "content"));
            ASSERT_EQ(ctl({"add", m_items.back(), "--group", "Leaving"}).exitStatus, 0);
        }
        ASSERT_EQ(ctl({"group", "autohide", "Leaving", "on"}).exitStatus, 0);
        ASSERT_EQ(ctl({"password", "set", "--password-stdin"}).exitStatus, 0); // nothing is shown by itself
    }

    ProgramRun ctl(const Words& words, const Words& strace = {}) {
        Words arguments;
        if (!strace.empty())
            arguments = {"/usr/bin/strace", "-E", "ASAN_OPTIONS=detect_leaks=0"};
        arguments.insert(arguments.end(), strace.begin(), strace.end());
        arguments.push_back(bundledProgram("veilkeepctl"));
        arguments.insert(arguments.end(), words.begin(), words.end());
        RunOptions options;
        options.inChild = [this] { ::dup2(::open(m_password.c_str(), O_RDONLY), STDIN_FILENO); };
        ProgramRun run = runProgram(arguments, options);
        while (::waitpid(-1, nullptr, 0) > 0)
            ;
        return run;
    }

    bool pass(const std::string& command, const Words& strace = {}) {
        Words words = {command};
        if (command == "autounhide")
            words.emplace_back("--password-stdin");
        const ProgramRun run = ctl(words, strace);
        return strace.empty() ? run.exitStatus == 0 : run.signal == SIGKILL;
    }

    std::vector<TracedCall> callsOfConcern(const std::string& command) {
        const std::string trace = m_tree.path("trace");
        pass(command, {"-y", "-o", trace});
        std::vector<TracedCall> calls = callsOfMain(readFile(trace));
        std::erase_if(calls, [this](const TracedCall& call) {
            return call.line.find(m_data) == std::string::npos &&
                   call.line.find(hiddenDirectoryName) == std::string::npos;
        });
        return calls;
    }

    void expectHiddenByTheNextStart() {
        BackgroundProgram service({bundledProgram("veilkeepctl"), "watch"});
        const AutoHideMark mark(m_data);
        EXPECT_TRUE(waitUntil([&] {
            return !mark.isSet() &&
                   std::ranges::none_of(m_items, [](const auto& item) { return exists(item); });
        }));
        service.end(SIGKILL);
        const auto records = FilesInfoFile(m_data + "/FilesInfo.Veilkeep").read().value_or({});
        EXPECT_EQ(records.size(), m_items.size());
        for (const File& record : records) {
            EXPECT_EQ(record.state(), File::Hidden);
            EXPECT_TRUE(exists(std::string(record.path()))) << record.path();
        }
    }

    ScratchTree m_tree;
    const std::string m_data = OwnPlaces::current().dataDirectory;
    const std::string m_password = m_tree.makeFile("password", "secret\n");
    Words m_items;
};

TEST_P(PassKillTest, IsFinishedByTheNextStart) {
    const std::string command = GetParam();
    const std::string before = command == "autohide" ? "autounhide" : "autohide";
    ASSERT_TRUE(pass(command));
    ASSERT_TRUE(pass(before));
    const std::vector<TracedCall> calls = callsOfConcern(command);
    const std::size_t step = static_cast<std::size_t>(rounds(4, 1));
    int killed = 0;
    for (std::size_t number = 0; number < calls.size() && !HasFailure(); number += step) {
        SCOPED_TRACE("killed at " + calls[number].line);
        pass(command);
        ASSERT_TRUE(pass(before));
        killed += pass(command, {"-o", "/dev/null", "-e",
                                 "inject=" + calls[number].name +
                                     ":signal=KILL:when=" + std::to_string(calls[number].number)});
        expectHiddenByTheNextStart();
    }
    std::printf("killed at %d of %zu calls\n", killed, calls.size());
    EXPECT_GE(killed, 10);
}

INSTANTIATE_TEST_SUITE_P(Passes, PassKillTest, ::testing::Values("autohide", "autounhide"),
                         [](const auto& pass) { return std::string(pass.param); });

} // namespace
} // namespace veilkeep::test
