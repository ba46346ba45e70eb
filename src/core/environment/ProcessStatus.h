#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace veilkeep {

// What the system tells of a process at one moment.
struct ProcessStatus {
    pid_t id = 0;
    pid_t parent = 0;
    unsigned int user = 0;
    std::string name;            // at most 15 bytes, as the process may have set it itself
    std::string program;         // its executable; empty where that may not be seen
    std::string controlGroup;    // its path in the unified hierarchy; empty where there is none
    std::uint64_t startTime = 0; // in ticks since the system's start

    static std::optional<ProcessStatus> of(pid_t process); // nothing for one that is not there
};

// The parts of a line of "/proc/PID/stat" that are in a ProcessStatus. Nothing for any other text.
std::optional<ProcessStatus> processStatusFromLine(const std::string& line);

} // namespace veilkeep
