// Stands where cloakWorker is looked for, and becomes it. One that is started ahead or searches waits first
// for a byte of the pipe that VEILKEEP_TEST_GATE names; a search also ends its waiting when it is told to
// end.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

int main(int count, char** arguments) {
    const std::string_view first = count > 1 ? arguments[1] : "", second = count > 2 ? arguments[2] : "";
    if (const char* const gate = std::getenv("VEILKEEP_TEST_GATE");
        gate && (first == "-w" || second == "-restore")) {
        sigset_t ending;
        ::sigemptyset(&ending);
        ::sigaddset(&ending, SIGTERM); // is blocked, and stays for the worker
        pollfd waited[] = {{::open(gate, O_RDWR | O_CLOEXEC), POLLIN, 0},
                           {::signalfd(-1, &ending, SFD_CLOEXEC), POLLIN, 0}};
        char byte = 0;
        if (::poll(waited, 2, 30'000) <= 0 ||
            ((waited[0].revents & POLLIN) != 0 && ::read(waited[0].fd, &byte, 1) != 1))
            return 0;
    }
    ::execv(REAL_WORKER, arguments);
    return 0;
}
