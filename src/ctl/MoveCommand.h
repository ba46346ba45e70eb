#pragma once

#include "core/protocol/CloakWorkerComunicator.h"
#include "ctl/CommandLine.h"
#include "ctl/TerminalOutput.h"

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace veilkeep {

// Hides or unhides items one after the other. A success is printed only once the directories that it touched
// are on the disk, which is seen to about every second and at the end. SIGINT and SIGTERM let the item in
// hand finish and end the batch there.
class MoveCommand {
public:
    MoveCommand(CloakWorkerComunicator& worker, TerminalOutput& output);

    ExitStatus hide(const std::vector<std::string>& arguments);
    ExitStatus unhide(const std::vector<std::string>& arguments);

private:
    using Move = CloakWorkerResult (MoveCommand::*)(const std::string& path);

    ExitStatus run(const std::vector<std::string>& arguments, Move move);
    CloakWorkerResult hideOne(const std::string& path);
    CloakWorkerResult unhideOne(const std::string& path);
    void moveOne(const std::string& argument, Move move);
    void fail(std::string_view argument, std::string_view reason);
    void tellWhatIsDone();

    CloakWorkerComunicator& m_worker;
    TerminalOutput& m_output;
    std::vector<std::string> m_movedTo;         // not printed yet
    std::set<std::string> m_touchedDirectories; // not synced yet
    std::chrono::steady_clock::time_point m_lastTold;
    bool m_someFailed = false;
};

} // namespace veilkeep
