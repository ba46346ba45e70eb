#pragma once

#include "core/base/UniqueFd.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace veilkeep::test {

// A program in the foreground of a terminal of its own, under a parent that stands for the shell: it knows
// when the program is stopped, and has it go on.
class Terminal {
public:
    Terminal(const std::vector<std::string>& arguments, const std::string& directory);
    ~Terminal(); // ends the program
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(const std::string& keys);
    std::string
    readUntil(const std::string& text); // what was shown since the last time; of nothing: what is there
    bool showsTyping() const;

    bool waitUntilStopped();
    void goOn();
    int waitForEnd(); // the exit status, negative for a signal

private:
    int nextFromParent();

    pid_t m_parent = -1;
    UniqueFd m_screen;
    UniqueFd m_toParent, m_fromParent;
};

} // namespace veilkeep::test
