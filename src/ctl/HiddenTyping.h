#pragma once

#include <signal.h>
#include <termios.h>

namespace veilkeep {

// As long as it lives, a terminal does not show what is typed on it. A signal that stops or ends this program
// meanwhile finds the terminal as it was before. One at a time; main thread.
class HiddenTyping {
public:
    explicit HiddenTyping(int terminal); // not owned
    ~HiddenTyping();
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

    bool isHidden() const { return m_isHidden; } // false: the terminal cannot

    // To be called again and again: does what signals asked for. True where this program was stopped and goes
    // on now, so that the question should be shown again.
    bool attend();

private:
    static constexpr int watched[] = {SIGTSTP, SIGQUIT, SIGCONT};

    void hide();
    void show();
    void watchFor(int signal);

    const int m_terminal;
    termios m_modes = {}; // as they were
    bool m_hasModes;
    bool m_isHidden = false;
    struct sigaction m_actions[sizeof(watched) / sizeof(*watched)] = {};
};

} // namespace veilkeep
