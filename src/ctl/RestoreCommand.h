#pragma once

#include "core/protocol/InProgressFolder.h"
#include "ctl/CommandLine.h"
#include "ctl/TerminalOutput.h"

#include <string>
#include <vector>

namespace veilkeep {

// Has the worker look for hidden items and prints the hidden path of each that it left a record of. The
// records stay for the application, which lists the items again.
class RestoreCommand {
public:
    RestoreCommand(std::string workerPath, InProgressFolder folder, TerminalOutput& output);

    ExitStatus restore(const std::vector<std::string>& arguments);

private:
    bool restoreBelow(const std::string& argument);
    bool printRecordedBelow(const std::string& directory);

    const std::string m_workerPath;
    const InProgressFolder m_folder;
    TerminalOutput& m_output;
};

} // namespace veilkeep
