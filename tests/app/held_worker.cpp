// Stands where cloakWorker is looked for, and becomes it. One that is started ahead waits first for a byte of
// the pipe that VEILKEEP_TEST_GATE names.

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

int main(int count, char** arguments) {
    const char* const gate = std::getenv("VEILKEEP_TEST_GATE");
    if (gate && count > 1 && arguments[1] == std::string_view("-w")) {
        pollfd waited{::open(gate, O_RDWR | O_CLOEXEC), POLLIN, 0};
        char byte = 0;
        if (::poll(&waited, 1, 30'000) <= 0 || ::read(waited.fd, &byte, 1) != 1)
            return 0;
    }
    ::execv(REAL_WORKER, arguments);
    return 0;
}
