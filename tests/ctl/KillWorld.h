#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/names/HiddenName.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/Strace.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace veilkeep::test {

using Words = std::vector<std::string>;

// veilkeepctl, to be killed in the midst of its work; the worker that it waited for goes on.
class KillWorld : public ::testing::Test {
protected:
    void SetUp() override {
        if (!straceWorks())
            GTEST_SKIP() << "strace cannot trace here";
        ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0); // workers that are left are this process' children
    }

    // With strace's options, if there are any; back when the worker has ended too.
    ProgramRun ctl(Words words, const Words& strace = {}) {
        words.insert(words.begin(), bundledProgram("veilkeepctl"));
        RunOptions options;
        options.inChild = [this] { ::dup2(::open(m_password.c_str(), O_RDONLY), STDIN_FILENO); };
        ProgramRun run = runProgram(strace.empty() ? words : traced(strace, words), options);
        while (::waitpid(-1, nullptr, 0) > 0)
            ;
        return run;
    }

    // Those that concern the lists, what lies beside them or a hidden directory.
    std::vector<TracedCall> callsOfConcern(const Words& words) {
        const std::string trace = m_tree.path("trace");
        EXPECT_EQ(ctl(words, {"-y", "-o", trace}).exitStatus, 0);
        std::vector<TracedCall> calls = callsOfMain(readFile(trace));
        std::erase_if(calls, [this](const TracedCall& call) {
            return call.line.find(m_data) == std::string::npos &&
                   call.line.find(hiddenDirectoryName) == std::string::npos;
        });
        return calls;
    }

    bool isKilledAt(const TracedCall& call, const Words& words) {
        return ctl(words, {"-o", "/dev/null", "-e", call.injecting("signal=KILL")}).signal == SIGKILL;
    }

    ScratchTree m_tree;
    const std::string m_data = OwnPlaces::current().dataDirectory;
    const std::string m_password = m_tree.makeFile("password", "secret\n");
    Words m_items;
};

} // namespace veilkeep::test
