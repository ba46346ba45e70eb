#pragma once

#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/WorkerAnswer.h"
#include "ctl/CommandLine.h"
#include "ctl/TerminalOutput.h"

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace veilkeep {

// Hides or unhides items one after the other. A success is printed only once the directories that it touched
// are on the disk, which is seen to about every second, before a folder above one of them moves, and at the
// end. SIGINT and SIGTERM let the item in hand finish and end the batch there.
class MoveCommand {
public:
    MoveCommand(CloakWorkerComunicator& worker, TerminalOutput& output);

    ExitStatus hide(const std::vector<std::string>& arguments);
    ExitStatus unhide(const std::vector<std::string>& arguments);

private:
    ExitStatus run(const std::vector<std::string>& arguments);
    void moveOne(const std::string& argument);
    CloakWorkerResult moveAndLook(const std::string& path);
    bool hasTouchedSomethingBelow(const std::string& path) const;
    void touch(std::string_view directory);
    void fail(std::string_view argument, std::string_view reason);
    void tellWhatIsDone();

    CloakWorkerComunicator& m_worker;
    TerminalOutput& m_output;
    WorkerOperation m_operation = WorkerOperation::Hide;
    std::vector<std::string> m_movedTo;         // not printed yet
    std::set<std::string> m_touchedDirectories; // not synced yet; links are followed
    std::chrono::steady_clock::time_point m_lastTold;
    bool m_someFailed = false;
};

} // namespace veilkeep
