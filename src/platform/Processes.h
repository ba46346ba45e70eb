#pragma once

#include <sys/types.h>

#include <chrono>

namespace veilkeep {

// What this process has to know of others at its start. Any thread.
class Processes {
public:
    virtual ~Processes() = default;

    // Whether the user's session started this process, going by its parent: for starts without the option
    // that says so.
    virtual bool wasLaunchedAtLogin() const = 0;

    // Waits for the end of the process that this one replaces, at most that long. False: whoever has the
    // number cannot be that one.
    virtual bool waitForFormer(pid_t process, std::chrono::milliseconds limit) const = 0;

protected:
    Processes() = default;
    Processes(const Processes&) = default;
    Processes& operator=(const Processes&) = default;
};

} // namespace veilkeep
