#pragma once

#include "core/base/UniqueFd.h"

#include <string>

namespace veilkeep {

// Where a process writes how it crashed that has no list (yet), as RunNote does for the one that has: the
// file "Running-PID" in the state directory, locked as long as the process lives. A RunNote that is made
// later in the same process takes over. Main thread.
class ProcessNote {
public:
    explicit ProcessNote(const std::string& stateDirectory);
    ~ProcessNote(); // the process ends as it should
    ProcessNote(const ProcessNote&) = delete;
    ProcessNote& operator=(const ProcessNote&) = delete;

    // Removes what processes left that are gone, but gives the last crash that it finds this name.
    static void takeOthers(const std::string& stateDirectory, const std::string& crash);

private:
    std::string m_path;
    UniqueFd m_file;
};

} // namespace veilkeep
