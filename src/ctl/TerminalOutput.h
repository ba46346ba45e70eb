#pragma once

#include <string>
#include <string_view>

namespace veilkeep {

// Standard output and standard error of a command: paths on the one, what went wrong on the other. Names are
// made harmless where a terminal shows them and go out as they are elsewhere.
class TerminalOutput {
public:
    explicit TerminalOutput(bool endNamesWithNul);

    void printPath(std::string_view path);
    void printError(std::string_view path, std::string_view reason); // "veilkeepctl: PATH: REASON"
    void printMessage(std::string_view message);                     // "veilkeepctl: MESSAGE"

    // Writes out what is still held back. False when standard output ever refused a path, which is told once.
    [[nodiscard]] bool flush();

private:
    void outputFailed(int systemError);

    const bool m_endNamesWithNul;
    const bool m_escapeOutput;
    const bool m_escapeErrors;
    bool m_outputFailed = false;
};

} // namespace veilkeep
