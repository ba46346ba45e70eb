#include "core/process/ChildWait.h"

#include "core/base/SystemCall.h"

#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr std::size_t readSize = 16384;
constexpr std::chrono::milliseconds pauseWithoutChildFd(1);
constexpr std::chrono::milliseconds pauseBetweenQuestions(100); // a signal just before poll() is lost on it

UniqueFd openChildFd(pid_t child) {
    return UniqueFd(static_cast<int>(::syscall(SYS_pidfd_open, child, 0))); // closed on exec by nature
}

} // namespace

ChildWait::ChildWait(pid_t child, UniqueFd output, const ChildProcessOptions& options)
    : m_child(child), m_childFd(openChildFd(child)), m_output(std::move(output)), m_options(options) {
    if (options.timeLimit)
        endAfter(*options.timeLimit);
}

void ChildWait::endAfter(std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    m_deadline = m_deadline ? std::min(*m_deadline, end) : end;
}

ChildProcessResult ChildWait::untilGone() {
    while (!m_gone) {
        waitForEvent();
        if (m_options.tick)
            m_options.tick->callWhenDue();
        endChildWhenAsked();
        endChildWhenOverdue();
    }
    readWhatIsLeft();
    return std::move(m_result);
}

int ChildWait::pollTimeout() const {
    std::optional<Clock::time_point> due = m_deadline;
    if (const auto tick = m_options.tick ? m_options.tick->nextDue() : std::nullopt)
        due = due ? std::min(*due, *tick) : *tick;
    const bool asks = m_options.shouldEnd && !m_askedOnRequest;
    if (!due && m_childFd && !asks)
        return -1;
    const Clock::time_point now = Clock::now();
    Clock::duration pause = due ? std::max(*due - now, Clock::duration::zero()) : Clock::duration::max();
    if (asks)
        pause = std::min<Clock::duration>(pause, pauseBetweenQuestions);
    if (!m_childFd)
        pause = std::min<Clock::duration>(pause, pauseWithoutChildFd);
    constexpr std::chrono::milliseconds longest = std::chrono::hours(1); // an int holds it
    return static_cast<int>(std::min(std::chrono::ceil<std::chrono::milliseconds>(pause), longest).count());
}

void ChildWait::waitForEvent() {
    pollfd events[] = {{m_output.get(), POLLIN, 0}, {m_childFd.get(), POLLIN, 0}}; // -1 is passed over
    const int count = ::poll(events, 2, pollTimeout());
    if (!m_childFd || count < 0)
        reap(WNOHANG);
    else if (count > 0 && events[1].revents != 0)
        reap(0);
    if (!m_gone && count > 0 && events[0].revents != 0)
        readSome(readSize);
}

void ChildWait::reap(int flags) {
    int status = 0;
    const pid_t answer = retryOnInterrupt([&] { return ::waitpid(m_child, &status, flags); });
    if (answer == 0)
        return;
    m_gone = true;
    if (answer < 0) {
        m_result.end = ChildProcessResult::End::Unknown;
        m_result.error = Error::system("waitpid", {}, errno);
    } else if (WIFEXITED(status)) {
        m_result.end = ChildProcessResult::End::Exited;
        m_result.status = WEXITSTATUS(status);
    } else {
        m_result.end = ChildProcessResult::End::Signalled;
        m_result.status = WTERMSIG(status);
    }
}

void ChildWait::readSome(std::size_t atMost) {
    char buffer[readSize];
    const ssize_t count =
        retryOnInterrupt([&] { return ::read(m_output.get(), buffer, std::min(atMost, readSize)); });
    if (count <= 0)
        return endOutput(); // the end of a pipe; nothing else is known to fail here
    const std::size_t room = ChildProcessResult::outputLimit - m_result.output.size();
    const std::size_t got = static_cast<std::size_t>(count);
    m_result.output.append(buffer, std::min(got, room));
    if (got > room) {
        m_result.truncated = true;
        endOutput();
    }
}

// What the child wrote is in the pipe now; what others that hold the pipe may add later is not waited for.
void ChildWait::readWhatIsLeft() {
    int left = 0; // a pipe always knows
    if (!m_output || ::ioctl(m_output.get(), FIONREAD, &left) != 0)
        return;
    while (m_output && left > 0) {
        const std::size_t before = m_result.output.size();
        readSome(static_cast<std::size_t>(left));
        left -= static_cast<int>(m_result.output.size() - before);
    }
}

void ChildWait::endOutput() {
    m_output.reset();
    endAfter(m_options.grace);
}

void ChildWait::endChildWhenAsked() {
    if (m_gone || m_askedOnRequest || !m_options.shouldEnd || !m_options.shouldEnd())
        return;
    ::kill(m_child, SIGTERM); // see below
    m_askedOnRequest = true;
}

void ChildWait::endChildWhenOverdue() {
    if (m_gone || !m_deadline || Clock::now() < *m_deadline)
        return;
    // Not yet waited for, so the number is still this child's. Refused where the child runs as another user:
    // then there is nothing to do but wait.
    ::kill(m_child, m_askedToEnd ? SIGKILL : SIGTERM);
    m_deadline = m_askedToEnd ? std::nullopt : std::optional(Clock::now() + m_options.grace);
    m_askedToEnd = true;
}

} // namespace veilkeep
