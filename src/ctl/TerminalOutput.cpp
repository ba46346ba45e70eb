#include "ctl/TerminalOutput.h"

#include "format/PrintableName.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <utility>

namespace veilkeep {
namespace {

constexpr long long progressInterval = 100; // ms
constexpr long long firstProgress = 500;    // ms: what takes less needs none
constexpr int narrowTerminal = 80;

long long now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

int terminalWidth() {
    winsize size = {};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : narrowTerminal;
}

} // namespace

std::string terminalText(const QString& text) {
    QString harmless = text;
    for (QChar& character : harmless)
        if (character != QLatin1Char('\n') &&
            (character.category() == QChar::Other_Control || character.category() == QChar::Other_Format))
            character = QChar::ReplacementCharacter;
    return harmless.toStdString();
}

TerminalOutput::TerminalOutput(bool endNamesWithNul)
    : m_endNamesWithNul(endNamesWithNul),
      m_holdsOutput(!::isatty(STDOUT_FILENO)),
      m_escapeOutput(!endNamesWithNul && !m_holdsOutput),
      m_escapeErrors(::isatty(STDERR_FILENO)),
      m_progressDue(now() + firstProgress) {}

void TerminalOutput::printPath(std::string_view path) {
    printPath({}, path);
}

void TerminalOutput::printPath(std::string_view before, std::string_view path) {
    std::string line;
    if (!before.empty() && !m_endNamesWithNul)
        line = std::string(before) + '\t';
    line += m_escapeOutput ? printableName(path) : std::string(path);
    line.push_back(m_endNamesWithNul ? '\0' : '\n');
    write(line);
}

void TerminalOutput::printPair(std::string_view path, std::string_view place) {
    const auto name = [this](std::string_view bytes) {
        return m_escapeOutput ? printableName(bytes) : std::string(bytes);
    };
    const std::string_view between = m_endNamesWithNul ? std::string_view("\0", 1) : " -> ";
    std::string line = name(path).append(between) + name(place);
    line.push_back(m_endNamesWithNul ? '\0' : '\n');
    write(line);
}

void TerminalOutput::printText(std::string_view text) {
    write(text);
}

void TerminalOutput::printError(std::string_view path, std::string_view reason) {
    writeError("veilkeepctl: " + (m_escapeErrors ? printableName(path) : std::string(path)) + ": " +
               std::string(reason) + "\n");
}

void TerminalOutput::printMessage(const QString& message) {
    writeError("veilkeepctl: " + terminalText(message) + "\n");
}

void TerminalOutput::showProgress(const QString& text) {
    if (!m_escapeErrors)
        return;
    if (text.isEmpty())
        return clearProgress();
    if (now() < m_progressDue)
        return;
    m_progressDue = now() + progressInterval;
    m_showsProgress = true;
    const QString line = QString(text).replace(QLatin1Char('\n'), QLatin1Char(' ')).left(terminalWidth() - 1);
    std::fputs(("\r\033[K" + terminalText(line)).c_str(), stderr);
}

void TerminalOutput::clearProgress() {
    if (m_showsProgress)
        std::fputs("\r\033[K", stderr);
    m_showsProgress = false;
}

bool TerminalOutput::flush() {
    writeNow(std::exchange(m_held, {}));
    if (std::fflush(stdout) != 0)
        outputFailed(errno);
    return !m_outputFailed;
}

void TerminalOutput::write(std::string_view text) {
    if (m_holdsOutput)
        m_held += text;
    else
        writeNow(text);
}

void TerminalOutput::writeNow(std::string_view text) {
    clearProgress();
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        outputFailed(errno);
}

// Nobody is left to tell when this fails.
void TerminalOutput::writeError(std::string_view text) {
    clearProgress();
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void TerminalOutput::outputFailed(int systemError) {
    if (!m_outputFailed)
        writeError(std::string("veilkeepctl: standard output: ") + std::strerror(systemError) + "\n");
    m_outputFailed = true;
}

} // namespace veilkeep
