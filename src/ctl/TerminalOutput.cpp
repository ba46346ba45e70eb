#include "ctl/TerminalOutput.h"

#include "format/PrintableName.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace veilkeep {
namespace {

bool write(std::FILE* stream, std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stream) == text.size();
}

} // namespace

TerminalOutput::TerminalOutput(bool endNamesWithNul)
    : m_endNamesWithNul(endNamesWithNul),
      m_escapeOutput(!endNamesWithNul && ::isatty(STDOUT_FILENO)),
      m_escapeErrors(::isatty(STDERR_FILENO)) {}

void TerminalOutput::printPath(std::string_view path) {
    std::string line = m_escapeOutput ? printableName(path) : std::string(path);
    line.push_back(m_endNamesWithNul ? '\0' : '\n');
    if (!write(stdout, line))
        outputFailed(errno);
}

void TerminalOutput::printError(std::string_view path, std::string_view reason) {
    printMessage((m_escapeErrors ? printableName(path) : std::string(path)) + ": " + std::string(reason));
}

void TerminalOutput::printMessage(std::string_view message) {
    write(stderr, "veilkeepctl: " + std::string(message) + "\n"); // nobody is left to tell when this fails
}

bool TerminalOutput::flush() {
    if (std::fflush(stdout) != 0)
        outputFailed(errno);
    return !m_outputFailed;
}

void TerminalOutput::outputFailed(int systemError) {
    if (!m_outputFailed)
        printMessage(std::string("standard output: ") + std::strerror(systemError));
    m_outputFailed = true;
}

} // namespace veilkeep
