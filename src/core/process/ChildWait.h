#pragma once

#include "core/base/UniqueFd.h"
#include "core/process/ChildProcess.h"

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace veilkeep {

// Waits for one child of this process and collects what it writes. The part of a ChildProcess after its
// start.
class ChildWait {
public:
    // output is the reading end of the pipe that the child writes to, or none.
    ChildWait(pid_t child, UniqueFd output, const ChildProcessOptions& options);

    void endAfter(std::chrono::milliseconds limit); // as the options' time limit does
    ChildProcessResult untilGone();

private:
    using Clock = Tick::Clock;

    int pollTimeout() const; // milliseconds, -1 for no limit
    void waitForEvent();
    void reap(int flags);
    void readSome(std::size_t atMost);
    void readWhatIsLeft();
    void endOutput();
    void endChildWhenAsked();
    void endChildWhenOverdue();

    pid_t m_child;
    UniqueFd m_childFd; // none where the system has no such descriptors
    UniqueFd m_output;
    const ChildProcessOptions& m_options;
    ChildProcessResult m_result;
    bool m_gone = false;
    bool m_askedToEnd = false;
    bool m_askedOnRequest = false;
    std::optional<Clock::time_point> m_deadline; // of the next signal to the child
};

} // namespace veilkeep
