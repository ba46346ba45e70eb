#include "platform/linux/LinuxProcesses.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "core/log/Log.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <string_view>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;

// They start what the user wants at login, and sessions of the former time, but nothing from menus.
constexpr std::string_view sessionManagers[] = {
    "gnome-session-binary", "gnome-session-service",
    "mate-session",         "cinnamon-session-binary",
    "cinnamon-session",     "xfce4-session",
    "lxqt-session",         "lxsession",
    "plasma_session",       "ksmserver",
    "budgie-session",
};

bool isSessionManager(const ProcessStatus& process) {
    constexpr std::size_t longestName = 15;
    const std::string_view program = lastPathComponent(process.program);
    return std::ranges::any_of(sessionManagers, [&](std::string_view name) {
        return program.empty() ? process.name == name.substr(0, longestName) : program == name;
    });
}

// The unit that systemd made of our autostart entry; that of another program may start ours for its own ends.
// What our program starts lies in it as well, but has another parent.
bool isAutostartUnit(std::string_view controlGroup) {
    return lastPathComponent(controlGroup) == "app-com.ostrel.Veilkeep@autostart.service";
}

// Whoever has the number is taken for the old process only where it can be that: the one that started this
// one, or else another run of the same program, which was there before. Numbers are used again.
bool mayBeFormer(pid_t process) {
    if (process == ::getppid())
        return true;
    const auto own = ProcessStatus::of(::getpid()), other = ProcessStatus::of(process);
    return own && other && other->user == own->user && other->name == own->name &&
           other->startTime < own->startTime;
}

// Whether it ended by then.
bool waitForEnd(const UniqueFd& process, Clock::time_point end) {
    pollfd entry{process.get(), POLLIN, 0};
    int ready = -1;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        ready = ::poll(&entry, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    } while (ready < 0 && errno == EINTR);
    return ready != 0;
}

} // namespace

bool LinuxProcesses::wasLaunchedAtLogin() const {
    const auto process = ProcessStatus::of(::getpid()), parent = ProcessStatus::of(::getppid());
    return process && parent && isLaunchOfSession(*process, *parent);
}

bool LinuxProcesses::isLaunchOfSession(const ProcessStatus& process, const ProcessStatus& parent) {
    return isSessionManager(parent) || (parent.name == "systemd" && isAutostartUnit(process.controlGroup));
}

// The descriptor first: what it stands for cannot be taken for another one later.
bool LinuxProcesses::waitForFormer(pid_t process, std::chrono::milliseconds limit) const {
    const UniqueFd former(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (!former || !mayBeFormer(process))
        return false;
    if (!waitForEnd(former, Clock::now() + limit))
        logLine("The process " + std::to_string(process) + " that is to be replaced does not end");
    return true;
}

} // namespace veilkeep
