#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace veilkeep {

// Standard output and standard error of a command: what was asked for on the one, what went wrong and how far
// it has come on the other. Names are made harmless where a terminal shows them and go out as they are
// elsewhere. What goes to no terminal is held back until flush(): its reader may be waiting for the list, in
// a command of its own, while the list is in use here. Main thread.
class TerminalOutput {
public:
    explicit TerminalOutput(bool endNamesWithNul);

    void printPath(std::string_view path);
    void printPath(std::string_view before, std::string_view path);  // before: "hidden", left out with -0
    void printPair(std::string_view path, std::string_view place);   // "PATH -> PLACE"; with -0 two names
    void printText(std::string_view text);                           // as it is
    void printError(std::string_view path, std::string_view reason); // "veilkeepctl: PATH: REASON"
    void printMessage(const QString& message); // "veilkeepctl: MESSAGE", further lines below it

    // One line that each later one, and whatever is printed, takes the place of; only on a terminal, only
    // after a while, and no more often than it can be read. Empty: no line.
    void showProgress(const QString& text);

    // Writes out what is still held back. False when standard output ever refused a path, which is told once.
    [[nodiscard]] bool flush();

private:
    void write(std::string_view text);
    void writeNow(std::string_view text);
    void writeError(std::string_view text);
    void clearProgress();
    void outputFailed(int systemError);

    const bool m_endNamesWithNul;
    const bool m_holdsOutput;
    const bool m_escapeOutput;
    const bool m_escapeErrors;
    std::string m_held;
    bool m_outputFailed = false;
    bool m_showsProgress = false;
    long long m_progressDue; // ms
};

// Without what moves a terminal's cursor or colours its text; line breaks stay.
std::string terminalText(const QString& text);

} // namespace veilkeep
