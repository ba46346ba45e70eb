#include "ctl/TerminalQuestions.h"

#include "ctl/HiddenTyping.h"
#include "ctl/Interruption.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr int pollInterval = 50; // ms
constexpr std::size_t longestLine = std::size_t{1} << 16;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TerminalQuestions)
};

// Programs that run in the background of a session with a terminal do not ask on it.
UniqueFd openTerminal() {
    if (!::isatty(STDIN_FILENO) && !::isatty(STDERR_FILENO))
        return UniqueFd();
    return UniqueFd(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
}

std::string promptText(const Question& question) {
    std::string text = terminalText(question.title) + "\n";
    if (!question.message.isEmpty())
        text += terminalText(question.message) + "\n";
    for (std::size_t number = 0; number < question.buttons.size(); ++number)
        text += "  " + std::to_string(number + 1) + "  " + terminalText(question.buttons[number]) +
                (number == 0 ? "  (default)\n" : "\n");
    return text;
}

} // namespace

std::optional<std::size_t> buttonOfLine(const Question& question, const QString& line) {
    const QString word = line.trimmed();
    if (word.isEmpty())
        return 0;
    bool isNumber = false;
    const qulonglong number = word.toULongLong(&isNumber);
    if (isNumber && number >= 1 && number <= question.buttons.size())
        return number - 1;
    std::optional<std::size_t> beginning;
    bool isAmbiguous = false;
    for (std::size_t button = 0; button < question.buttons.size(); ++button) {
        const QString& title = question.buttons[button];
        if (title.compare(word, Qt::CaseInsensitive) == 0)
            return button;
        if (title.startsWith(word, Qt::CaseInsensitive))
            isAmbiguous = std::exchange(beginning, button).has_value() || isAmbiguous;
    }
    return isAmbiguous ? std::nullopt : beginning;
}

TerminalQuestions::TerminalQuestions(std::vector<std::string> words, bool takesDefault,
                                     TerminalOutput& output)
    : m_words(std::move(words)), m_takesDefault(takesDefault), m_output(output), m_terminal(openTerminal()) {}

std::size_t TerminalQuestions::ask(const Question& question) {
    const std::size_t last = question.buttons.size() - 1;
    const QString whole =
        question.message.isEmpty() ? question.title : question.title + QLatin1Char('\n') + question.message;
    if (question.buttons.size() == 1) {
        m_output.printMessage(whole);
        return 0;
    }
    const auto answer = answeredBeforehand(question);
    if (answer && std::exchange(m_answeredBeforehand, whole) != whole)
        return *answer;
    if (m_terminal && m_words.empty())
        return askOnTerminal(question);
    m_output.printMessage(whole);
    m_output.printMessage((answer ? Texts::tr("asked again, so answered with: %1")
                                  : Texts::tr("not asked, so answered with: %1"))
                              .arg(question.buttons[last]));
    return last;
}

std::optional<std::size_t> TerminalQuestions::answeredBeforehand(const Question& question) const {
    for (const std::string& word : m_words)
        for (std::size_t button = 0; button < question.buttons.size(); ++button)
            if (question.buttons[button].compare(QString::fromStdString(word), Qt::CaseInsensitive) == 0)
                return button;
    return m_takesDefault ? std::optional<std::size_t>(0) : std::nullopt;
}

std::size_t TerminalQuestions::askOnTerminal(const Question& question) {
    m_output.showProgress({});
    m_isCancelled = false;
    ::tcflush(m_terminal.get(), TCIFLUSH); // what was typed before the question is no answer to it
    writeToTerminal(promptText(question));
    while (true) {
        writeToTerminal("[1-" + std::to_string(question.buttons.size()) + "]: ");
        const auto line = readLine(m_terminal.get());
        if (!line) {
            writeToTerminal("\n");
            return question.buttons.size() - 1;
        }
        if (const auto button = buttonOfLine(question, QString::fromStdString(*line)))
            return *button;
    }
}

std::optional<QString> TerminalQuestions::askPassword(const QString& line, int wrongEntries) {
    m_output.showProgress({});
    m_isCancelled = false;
    m_entered = wrongEntries == 0 ? std::exchange(m_repeated, std::nullopt) : std::nullopt;
    if (m_entered)
        return m_entered;
    const auto bytes =
        m_takesPasswordsFromInput ? passwordOfInput(wrongEntries) : passwordOfTerminal(line, wrongEntries);
    if (bytes)
        m_entered = QString::fromStdString(*bytes);
    return m_entered;
}

std::optional<std::string> TerminalQuestions::passwordOfInput(int wrongEntries) {
    if (wrongEntries > 0) {
        m_output.printMessage(Texts::tr("the password is wrong"));
        return std::nullopt;
    }
    auto line = readLine(STDIN_FILENO);
    if (!line && !m_isCancelled && !Interruption::isAsked())
        m_output.printMessage(Texts::tr("there is no password on standard input"));
    return line;
}

std::optional<std::string> TerminalQuestions::passwordOfTerminal(const QString& line, int wrongEntries) {
    if (!m_terminal) {
        m_output.printMessage(
            Texts::tr("there is no terminal to ask for the password on; see the option --password-stdin"));
        return std::nullopt;
    }
    HiddenTyping typing(m_terminal.get());
    if (!typing.isHidden()) {
        m_output.printMessage(
            Texts::tr("the terminal cannot hide what is typed, so the password is not asked for"));
        return std::nullopt;
    }
    if (wrongEntries > 0)
        writeToTerminal(
            terminalText(Texts::tr("Wrong password. Wrong entries so far: %1").arg(wrongEntries)) + "\n");
    const std::string prompt = terminalText(line) + " ";
    writeToTerminal(prompt);
    auto entered = readLine(m_terminal.get(), [&] {
        if (typing.attend())
            writeToTerminal(prompt);
    });
    if (!entered)
        writeToTerminal("\n");
    return entered;
}

std::optional<std::string> TerminalQuestions::readLine(int input, const std::function<void()>& whileWaiting) {
    std::string line;
    while (!m_isCancelled && !Interruption::isAsked()) {
        pollfd waited{input, POLLIN, 0};
        if (::poll(&waited, 1, pollInterval) <= 0) {
            QCoreApplication::processEvents();
            if (whileWaiting)
                whileWaiting();
            continue;
        }
        char byte = 0;
        const ssize_t count = ::read(input, &byte, 1);
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0 && input == STDIN_FILENO && !line.empty())
            return line; // the last one of a file may lack its end
        if (count <= 0 || line.size() == longestLine)
            return std::nullopt;
        if (byte == '\n')
            return line;
        line.push_back(byte);
    }
    return std::nullopt;
}

void TerminalQuestions::writeToTerminal(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t count = ::write(m_terminal.get(), text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return; // the terminal is gone, which its reading tells
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace veilkeep
