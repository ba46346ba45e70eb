#pragma once

#include "core/base/UniqueFd.h"
#include "ctl/TerminalOutput.h"
#include "platform/Request.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

// Answers questions: by words given beforehand, else with the default button where that is wanted, else by
// asking on the terminal, else with the button that cancels. Main thread.
class TerminalQuestions {
public:
    // The words are buttons' titles. The output is not owned.
    TerminalQuestions(std::vector<std::string> words, bool takesDefault, TerminalOutput& output);

    // Whether there are answers beside the cancelling ones.
    bool isInteractive() const { return !m_words.empty() || m_takesDefault || m_terminal; }

    // The number of a button. Events are worked on while the terminal is waited for.
    std::size_t ask(const Question& question);
    void cancel() { m_isCancelled = true; } // the question that is open on the terminal

private:
    std::optional<std::size_t> answeredByWords(const Question& question) const;
    std::size_t askOnTerminal(const Question& question);
    std::optional<std::string> readLine(); // nothing: the question is cancelled
    void writeToTerminal(std::string_view text) const;

    const std::vector<std::string> m_words;
    const bool m_takesDefault;
    TerminalOutput& m_output;
    UniqueFd m_terminal; // none where nobody can be asked
    bool m_isCancelled = false;
};

// By its number (from 1), its title or an unambiguous beginning of that; the empty line is the first button.
// Nothing for a line that says none of them.
std::optional<std::size_t> buttonOfLine(const Question& question, const QString& line);

} // namespace veilkeep
