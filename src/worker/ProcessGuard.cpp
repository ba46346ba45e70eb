#include "worker/ProcessGuard.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <initializer_list>

namespace veilkeep {
namespace {

constexpr int endingSignals[] = {SIGTERM, SIGHUP, SIGINT};

sigset_t endingSignalSet() {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : endingSignals)
        ::sigaddset(&set, signal);
    return set;
}

} // namespace

void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0 && ::open("/", O_RDONLY | O_DIRECTORY) < 0)
            ::_exit(0); // not even the root directory opens: nothing can be done and nothing has been
}

void deferEndingSignals() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
    const sigset_t set = endingSignalSet();
    ::sigprocmask(SIG_BLOCK, &set, nullptr);
}

bool endingSignalArrived() {
    sigset_t pending;
    if (::sigpending(&pending) != 0)
        return false;
    for (const int signal : endingSignals)
        if (::sigismember(&pending, signal) == 1)
            return true;
    return false;
}

void handleEndingSignals(void (*handler)(int)) {
    struct sigaction action = {}, before = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endingSignals)
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) // as nohup sets it
            ::sigaction(signal, &action, nullptr);
    const sigset_t set = endingSignalSet();
    ::sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

} // namespace veilkeep
