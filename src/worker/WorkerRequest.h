#pragma once

#include <optional>
#include <span>
#include <string>

namespace veilkeep {

// One command line: [-p] [-i] [-w] -hide [-removeRecents] PATH, [-p] [-i] [-w] -unhide PATH, [-p] [-w]
// -rescue PATH or [-p] -restore DIRECTORY. "-" in PATH's place says that the path comes on standard input
// (RequestInput). -w waits for a byte from there before anything is done. -i: questions may be asked, where
// the person at the screen can be reached (Question.h).
struct WorkerRequest {
    enum class Operation { Hide, Unhide, Rescue, Restore };

    Operation operation = Operation::Hide;
    bool printAnswer = false;   // -p: the protocol line goes to standard output
    bool removeRecents = false; // other programs' traces of a hidden item are to be cleaned
    bool isHeld = false;        // -w
    bool mayAsk = false;        // -i
    bool pathIsOnInput = false; // never together with that
    std::string path;           // empty then

    // The arguments without the program's name; nothing when they are not of that form.
    static std::optional<WorkerRequest> parse(std::span<char* const> arguments);
};

} // namespace veilkeep
