#include "core/process/ChildProcess.h"

#include "core/base/UniqueFd.h"
#include "tests/support/FailingCall.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <thread>

namespace veilkeep {
namespace {

using namespace std::chrono_literals;
using test::openDescriptors;
using End = ChildProcessResult::End;
constexpr std::size_t limit = ChildProcessResult::outputLimit;

ChildProcessResult runSteps(const std::string& steps, const ChildProcessOptions& options = {}) {
    return runChildProcess(VEILKEEP_BAD_WORKER, {steps}, options);
}

// Lets go a child that waits at a FIFO with "wait".
struct Gate {
    explicit Gate(const test::ScratchTree& tree) : path(tree.path("gate")) { ::mkfifo(path.c_str(), 0600); }
    bool open() const { // false while the child is not there yet
        return static_cast<bool>(UniqueFd(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)));
    }
    std::string path;
};

struct Row {
    std::string steps;
    End end;
    int status;
    std::string output;
    bool truncated = false;
};

void expectRows(const std::vector<Row>& rows) {
    ChildProcessOptions options;
    for (const Row& row : rows) {
        const bool isEndedByUs =
            row.end == End::Signalled && (row.status == SIGTERM || row.status == SIGKILL);
        options.grace = isEndedByUs ? 30ms : 60s;
        const ChildProcessResult result = runSteps(row.steps, options);
        EXPECT_EQ(result.end, row.end) << row.steps;
        EXPECT_EQ(result.status, row.status) << row.steps;
        EXPECT_TRUE(result.output == row.output) << row.steps << ": " << result.output.substr(0, 200);
        EXPECT_EQ(result.truncated, row.truncated) << row.steps;
    }
}

std::vector<Row> badChildren() {
    const std::string full(limit, 'x');
    return {
        {"out=NewFilename: /a|exit=1", End::Exited, 1, "NewFilename: /a"},
        {"", End::Exited, 0, ""},
        {"exit=255", End::Exited, 255, ""},
        {"out=NewFile|signal=9", End::Signalled, SIGKILL, "NewFile"},
        {"out=a|signal=6", End::Signalled, SIGABRT, "a"},
        {"out=a|nul|out=\xff\xfe|nul|exit=3", End::Exited, 3, std::string("a\0\xff\xfe\0", 5)},
        {"rubbish=300000|exit=1", End::Exited, 1, std::string(300000, 'x')},
        {"rubbish=1048576|exit=1", End::Exited, 1, full},
        {"ignore=13|rubbish=1048577|exit=1", End::Exited, 1, full, true},
        {"endless", End::Signalled, SIGPIPE, full, true},
        {"ignore=13|endless", End::Signalled, SIGTERM, full, true},
        {"close|exit=1", End::Exited, 1, ""},
        {"out=a|close|pause", End::Signalled, SIGTERM, "a"},
        {"out=a|ignore=15|close|pause", End::Signalled, SIGKILL, "a"},
        {"out=a|grandchild|out=b|exit=1", End::Exited, 1, "ab"},
        {"grandchild|rubbish=60000|signal=9", End::Signalled, SIGKILL, std::string(60000, 'x')},
        {"arguments", End::Exited, 0, "arguments\n"},
    };
}

TEST(ChildProcess, TellsHowEachKindOfChildEnded) {
    expectRows(badChildren());
}

TEST(ChildProcess, DoesTheSameWithoutChildDescriptors) {
    std::thread([] {
        ASSERT_TRUE(test::failCall(SYS_pidfd_open, ENOSYS));
        ASSERT_EQ(::syscall(SYS_pidfd_open, ::getpid(), 0), -1);
        expectRows(badChildren());
    }).join();
}

TEST(ChildProcess, SaysWhyAProgramDoesNotStart) {
    const test::ScratchTree tree;
    const std::tuple<std::string, std::vector<std::string>, ErrorCode, int> rows[] = {
        {tree.path("missing"), {}, ErrorCode::System, ENOENT},
        {"", {}, ErrorCode::System, ENOENT},
        {tree.root(), {}, ErrorCode::System, EACCES},
        {tree.makeFile("notExecutable", "#!/bin/sh\n"), {}, ErrorCode::System, EACCES},
        {tree.makeFile("rubbish", "rubbish", 0755), {}, ErrorCode::System, ENOEXEC},
        {tree.makeFile("noInterpreter", "#!/missing\n", 0755), {}, ErrorCode::System, ENOENT},
        {tree.makeFile("file") + "/x", {}, ErrorCode::System, ENOTDIR},
        {VEILKEEP_BAD_WORKER, {std::string(3 << 20, 'x')}, ErrorCode::System, E2BIG},
        {VEILKEEP_BAD_WORKER, {std::string("out=a\0b", 7)}, ErrorCode::InvalidArgument, 0},
        {std::string("/bin/true\0x", 11), {}, ErrorCode::InvalidArgument, 0},
    };
    const std::ptrdiff_t before = openDescriptors();
    for (const auto& [program, arguments, code, number] : rows) {
        const ChildProcessResult result = runChildProcess(program, arguments);
        EXPECT_EQ(result.end, End::NotStarted) << program;
        EXPECT_EQ(result.error.code, code) << program;
        EXPECT_EQ(result.error.systemError, number) << program;
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child was left behind";
}

TEST(ChildProcess, GivesTheChildNothingButItsStreams) {
    int extra[8];
    for (int& fd : extra)
        fd = ::open("/", O_RDONLY); // not closed on exec
    EXPECT_EQ(runSteps("descriptors").output.find("0 /dev/null\n1 pipe\n2 "), 0U);
    const std::string listed = runSteps("descriptors").output;
    EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n'), 3) << listed;
    for (const int fd : extra)
        ::close(fd);
}

// Each of the parent's own streams may be closed, or stand for some other file of the parent's.
TEST(ChildProcess, KeepsStreamsApartWhenThoseOfTheParentAreClosed) {
    int kept[3];
    for (int stream = 0; stream < 3; ++stream)
        kept[stream] = ::fcntl(stream, F_DUPFD_CLOEXEC, 100);
    std::vector<ChildProcessResult> results;
    for (int closed = 1; closed < 8; ++closed) {
        for (int stream = 0; stream < 3; ++stream)
            if (closed & (1 << stream))
                ::close(stream);
        results.push_back(runSteps("descriptors"));
        if (closed & 4) {
            const int other = ::fcntl(100, F_DUPFD_CLOEXEC, 2);
            results.push_back(runSteps("descriptors"));
            ::close(other);
        }
        for (int stream = 0; stream < 3; ++stream)
            ::dup2(kept[stream], stream);
    }
    for (const int fd : kept)
        ::close(fd);
    for (const ChildProcessResult& result : results) {
        EXPECT_EQ(result.output.find("0 /dev/null\n1 pipe\n2 "), 0U) << result.output;
        EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 3) << result.output;
    }
    EXPECT_EQ(results.size(), 11U);
    EXPECT_EQ(results.back().output, "0 /dev/null\n1 pipe\n2 /dev/null\n");
}

TEST(ChildProcess, GivesTheChildCleanSignals) {
    const int changed[] = {SIGPIPE, SIGTERM, SIGCHLD, SIGXFSZ};
    sigset_t blocked, before;
    ::sigemptyset(&blocked);
    for (const int number : changed) {
        ::sigaddset(&blocked, number);
        ::signal(number, SIG_IGN);
    }
    for (const int number : {SIGHUP, SIGINT})
        ::sigaddset(&blocked, number);
    ::sigprocmask(SIG_BLOCK, &blocked, &before);
    const ChildProcessResult result = runSteps("signals|exit=7");
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    for (const int number : changed)
        ::signal(number, SIG_DFL);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.exitedWith(7)) << "the ignored SIGCHLD lost the status";
}

TEST(ChildProcess, SignalsThatEndAChild) {
    ChildProcessOptions deferred;
    deferred.deferEndingSignals = true;
    EXPECT_EQ(runSteps("signals", deferred).output, "blocked 1\nblocked 2\nblocked 15\n");
    ::signal(SIGHUP, SIG_IGN);
    EXPECT_EQ(runSteps("signals").output, "ignored 1\n") << "a child of nohup is one as well";
    ::signal(SIGHUP, SIG_DFL);

    const test::ScratchTree tree;
    const Gate gate(tree);
    ChildProcessOptions untilGate;
    untilGate.shouldEnd = [&] { return gate.open(); };
    const ChildProcessResult result = runSteps("out=a|wait=" + gate.path + "|pause", untilGate);
    EXPECT_EQ(result.end, End::Signalled);
    EXPECT_EQ(result.status, SIGTERM);
    EXPECT_EQ(result.output, "a");
}

TEST(ChildProcess, TicksWhileAChildWithItsPipeOpenTakesItsTime) {
    const test::ScratchTree tree;
    const Gate gate(tree);
    int ticks = 0;
    Tick tick([&] { return ++ticks >= 20 && gate.open(); }, 2ms);
    ChildProcessOptions options;
    options.tick = &tick;
    options.grace = 1ms; // shorter than the wait: it is for children that have closed their output
    const ChildProcessResult result = runSteps("out=a|wait=" + gate.path + "|out=b|exit=1", options);
    EXPECT_TRUE(result.exitedWith(1));
    EXPECT_EQ(result.output, "ab");
    EXPECT_GE(ticks, 20);
}

TEST(ChildProcess, EndsAChildAfterItsTimeLimit) {
    ChildProcessOptions options;
    options.grace = 10ms;
    options.timeLimit = 20ms;
    EXPECT_EQ(runSteps("pause", options).status, SIGTERM);
    options.timeLimit = 60s;
    EXPECT_TRUE(runSteps("rubbish=100000|exit=4", options).exitedWith(4));
}

} // namespace
} // namespace veilkeep
