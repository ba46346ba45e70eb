#include "ctl/HiddenTyping.h"

#include "core/base/SystemCall.h"

#include <iterator>

namespace veilkeep {
namespace {

volatile sig_atomic_t wantsToStop = 0, wantsToQuit = 0, goesOn = 0;

void note(int signal) {
    volatile sig_atomic_t& noted = signal == SIGTSTP ? wantsToStop : signal == SIGQUIT ? wantsToQuit : goesOn;
    noted = 1;
}

} // namespace

HiddenTyping::HiddenTyping(int terminal)
    : m_terminal(terminal), m_hasModes(::tcgetattr(terminal, &m_modes) == 0) {
    wantsToStop = 0;
    wantsToQuit = 0;
    goesOn = 0;
    for (std::size_t index = 0; index < std::size(watched); ++index) {
        ::sigaction(watched[index], nullptr, &m_actions[index]);
        watchFor(watched[index]);
    }
    hide();
}

HiddenTyping::~HiddenTyping() {
    show();
    for (std::size_t index = 0; index < std::size(watched); ++index)
        ::sigaction(watched[index], &m_actions[index], nullptr);
}

// One that was ignored before stays so.
void HiddenTyping::watchFor(int signal) {
    struct sigaction action = {}, before = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
        ::sigaction(signal, &action, nullptr);
}

// What was typed before is no answer, and what was typed for this question is for nobody else.
void HiddenTyping::hide() {
    termios hidden = m_modes;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHOE | ECHOK);
    hidden.c_lflag |= ICANON | ISIG | ECHONL;
    if (m_hasModes)
        m_isHidden = retryOnInterrupt([&] { return ::tcsetattr(m_terminal, TCSAFLUSH, &hidden); }) == 0;
}

void HiddenTyping::show() {
    if (m_isHidden)
        retryOnInterrupt([&] { return ::tcsetattr(m_terminal, TCSAFLUSH, &m_modes); });
    m_isHidden = false;
}

bool HiddenTyping::attend() {
    for (volatile sig_atomic_t* const wanted : {&wantsToStop, &wantsToQuit}) {
        if (*wanted == 0)
            continue;
        *wanted = 0;
        const int signal = wanted == &wantsToStop ? SIGTSTP : SIGQUIT;
        show();
        ::signal(signal, SIG_DFL);
        ::raise(signal);
        watchFor(signal);
        goesOn = 1;
    }
    if (goesOn == 0)
        return false;
    goesOn = 0;
    hide();
    return true;
}

} // namespace veilkeep
