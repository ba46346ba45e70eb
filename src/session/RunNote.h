#pragma once

#include "core/base/UniqueFd.h"
#include "session/CrashNote.h"

#include <optional>
#include <string>

namespace veilkeep {

// Tells this run of the last one: the file "Running" in the state directory lies there as long as the program
// runs, and a crash writes into it how it ended. What a run that crashed has left, or a process without the
// list, stays as "Crash Note" until the user was told. One in a process, which owns the list; main thread.
class RunNote {
public:
    explicit RunNote(const std::string& stateDirectory);
    ~RunNote(); // the program ends as it should
    RunNote(const RunNote&) = delete;
    RunNote& operator=(const RunNote&) = delete;

    // Of the last run that crashed, once: nothing after that.
    std::optional<CrashNote> takeLastCrash();
    void forgetLastCrash(); // in later runs as well

private:
    void lookAtLastRun();
    void begin();

    std::string m_running, m_crash; // paths
    UniqueFd m_file;
    std::optional<CrashNote> m_lastCrash;
};

} // namespace veilkeep
