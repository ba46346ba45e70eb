#pragma once

#include "core/base/UniqueFd.h"
#include "ctl/TerminalOutput.h"
#include "platform/Request.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Answers questions: by words given beforehand, else with the default button where that is wanted, else by
// asking on the terminal, else with the button that cancels. An answer given beforehand counts once: who is
// asked the same again would be asked for ever. Passwords come from the terminal or from standard input. Main
// thread.
class TerminalQuestions {
public:
    // The words are buttons' titles. The output is not owned.
    TerminalQuestions(std::vector<std::string> words, bool takesDefault, TerminalOutput& output);

    // Whether there are answers beside the cancelling ones.
    bool isInteractive() const { return !m_words.empty() || m_takesDefault || m_terminal; }

    // Whether the answer to a question is given beforehand, as far as it can be known before it is put.
    bool answersBeforehand() const { return !m_words.empty() || m_takesDefault; }

    // The number of a button. Events are worked on while the terminal is waited for.
    std::size_t ask(const Question& question);
    void cancel() { m_isCancelled = true; } // the question that is open

    // What is asked from now on is about another item.
    void goOn() { m_answeredBeforehand.clear(); }

    // On the terminal, even where there are answers to other questions beforehand; nothing where it is
    // cancelled or there is no terminal.
    std::optional<QString> askPassword(const QString& line, int wrongEntries);

    // From now on each password is a line of standard input, and a wrong one is not asked for again.
    void takePasswordsFromInput() { m_takesPasswordsFromInput = true; }
    bool takesPasswordsFromInput() const { return m_takesPasswordsFromInput; }

    // The entry that was just given answers the next question for a password as well.
    void repeatPassword() { m_repeated = m_entered; }

private:
    std::optional<std::size_t> answeredBeforehand(const Question& question) const;
    std::size_t askOnTerminal(const Question& question);
    std::optional<std::string> passwordOfInput(int wrongEntries);
    std::optional<std::string> passwordOfTerminal(const QString& line, int wrongEntries);

    // Nothing: the question is cancelled, or the input is at its end. What is done while it is waited for
    // comes on top of events.
    std::optional<std::string> readLine(int input, const std::function<void()>& whileWaiting = {});
    void writeToTerminal(std::string_view text) const;

    const std::vector<std::string> m_words;
    const bool m_takesDefault;
    TerminalOutput& m_output;
    UniqueFd m_terminal;          // none where nobody can be asked
    QString m_answeredBeforehand; // the last question that was
    bool m_isCancelled = false;
    bool m_takesPasswordsFromInput = false;
    std::optional<QString> m_entered, m_repeated;
};

// By its number (from 1), its title or an unambiguous beginning of that; the empty line is the first button.
// Nothing for a line that says none of them.
std::optional<std::size_t> buttonOfLine(const Question& question, const QString& line);

} // namespace veilkeep
