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
    struct sigaction action = {};
    action.sa_handler = ask;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(signal, &action, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
}

bool Interruption::isAsked() {
    return asked != 0;
}

} // namespace veilkeep
