#pragma once

#include "core/base/Error.h"
#include "core/base/Result.h"
#include "core/base/UniqueFd.h"
#include "core/process/Tick.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

class ChildWait;

struct ChildProcessOptions {
    std::string input;          // what the child reads from its standard input
    bool isHeld = false;        // it reads one byte instead, which ChildProcess::release() sends
    std::string directory;      // its working directory; empty for this process'
    bool discardErrors = false; // what it writes to its standard error goes nowhere
    bool inheritEnvironment = true;
    // "NAME=value", each instead of the variable of that name that the child would inherit.
    std::vector<std::string> variables;
    Tick* tick = nullptr; // called while waiting
    // How long a child that has closed its output may live on before SIGTERM, and then before SIGKILL.
    std::chrono::milliseconds grace = std::chrono::seconds(10);
    // How long a child may run at all before it is ended in the same two steps; by default as long as it
    // likes.
    std::optional<std::chrono::milliseconds> timeLimit;
    // SIGTERM, SIGHUP and SIGINT are blocked in the child from its first moment on, for it to deal with them.
    bool deferEndingSignals = false;
    // When it answers true the child gets SIGTERM, once, and is waited for further. Asked several times a
    // second and after each signal that this thread handles.
    std::function<bool()> shouldEnd;
};

struct ChildProcessResult {
    enum class End {
        NotStarted, // error says why
        Exited,     // status is the exit status, 0 to 255
        Signalled,  // status is the signal's number
        Unknown,    // it ran, but somebody else took its status; error says how that showed
    };

    End end = End::NotStarted;
    int status = 0;
    Error error;
    std::string output;     // standard output as far as it came, at most outputLimit bytes
    bool truncated = false; // there was more

    static constexpr std::size_t outputLimit = std::size_t{1} << 20;

    bool exitedWith(int wanted) const { return end == End::Exited && status == wanted; }
    std::string howItEnded() const; // for the log: "exit status 1", "signal 15", "posix_spawn: No such file…"
};

// One run of a program, given by its path. It gets the arguments (its own name is put first), the input,
// directory and environment of the options, this process' standard error, no other descriptor, no blocked
// signal unless asked for, and default answers to SIGPIPE, SIGTERM, SIGCHLD and SIGXFSZ; where SIGHUP or
// SIGINT is ignored (nohup) the child ignores it too. Any thread. Where this process ignores SIGCHLD that is
// taken back, for it would lose every child's exit status.
class ChildProcess {
public:
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                 ChildProcessOptions options = {});
    // A child that nobody waited for is waited for now. Held, it sees the end of its input; after a second it
    // is ended.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Lets a held child go on. False when it is not there or will not read any more.
    bool release();

    // Waits for its end; called once. A held child must have been released, else it ends undone. Nothing
    // written by a process that outlives the child is waited for.
    ChildProcessResult untilGone();

private:
    Result<void> start(const std::string& program, const std::vector<std::string>& arguments);

    ChildProcessOptions m_options;
    UniqueFd m_hold;                   // what a held child reads from
    Error m_trouble;                   // why it was not started
    std::unique_ptr<ChildWait> m_wait; // null when it was not started, or has been waited for
};

// All of it in one call.
ChildProcessResult runChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                                   const ChildProcessOptions& options = {});

} // namespace veilkeep
