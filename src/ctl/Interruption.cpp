#include "ctl/Interruption.h"

#include <signal.h>

#include <initializer_list>

namespace veilkeep {
namespace {

volatile sig_atomic_t asked = 0;

void ask(int) {
    asked = 1;
}

} // namespace

void Interruption::watch() {
    struct sigaction action = {}, before = {};
    action.sa_handler = ask;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) // as nohup sets it
            ::sigaction(signal, &action, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
}

bool Interruption::isAsked() {
    return asked != 0;
}

} // namespace veilkeep
