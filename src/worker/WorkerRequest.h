#pragma once

#include <optional>
#include <span>
#include <string>

namespace veilkeep {

// One command line: [-p] [-i] -hide [-removeRecents] PATH, [-p] [-i] -unhide PATH or [-p] -restore DIRECTORY.
// "-" in PATH's place says that the path comes on standard input (RequestInput). -i (questions may be asked)
// and -removeRecents are taken and change nothing: there is nobody to ask yet, and nothing that cleans lists
// of recent items.
struct WorkerRequest {
    enum class Operation { Hide, Unhide, Restore };

    Operation operation = Operation::Hide;
    bool printAnswer = false; // -p: the protocol line goes to standard output
    bool pathIsOnInput = false;
    std::string path; // empty then

    // The arguments without the program's name; nothing when they are not of that form.
    static std::optional<WorkerRequest> parse(std::span<char* const> arguments);
};

} // namespace veilkeep
