#include "worker/Question.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/environment/Bundle.h"
#include "core/environment/Variables.h"
#include "core/log/Log.h"
#include "core/process/SpawnSettings.h"
#include "worker/ProcessGuard.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace veilkeep {
namespace {

std::optional<std::string> packed(const std::vector<std::string>& fields) {
    std::string bytes;
    for (const std::string& field : fields) {
        if (field.empty() || field.find('\0') != std::string::npos)
            return std::nullopt;
        bytes += field;
        bytes += '\0';
    }
    bytes += '\0';
    return bytes.size() <= Question::maximumSize ? std::optional(bytes) : std::nullopt;
}

// The process that asks, and this worker's end of the socket that is its standard input and output.
struct Asking {
    pid_t process = -1;
    UniqueFd processFd, socket;
};

std::optional<Asking> start(const std::string& kind) {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return std::nullopt;
    Asking asking;
    asking.socket.reset(ends[0]);
    const UniqueFd theirs(ends[1]);
    SpawnSettings settings;
    settings.duplicate(theirs.get(), STDIN_FILENO);
    settings.duplicate(theirs.get(), STDOUT_FILENO);
    settings.closeOthers();
    settings.startIn("/");
    settings.useCleanSignals(false);
    const std::string program = bundledProgramPath(applicationBundlePath(), "Veilkeep");
    if (const int failure = settings.spawn(asking.process, program, {"--ask", kind}, environ)) {
        logError("A question could not be asked", Error::system("posix_spawn", program, failure));
        return std::nullopt;
    }
    asking.processFd.reset(static_cast<int>(::syscall(SYS_pidfd_open, asking.process, 0)));
    return asking;
}

UniqueFd openEndingSignals() {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        ::sigaddset(&set, signal);
    return UniqueFd(::signalfd(-1, &set, SFD_CLOEXEC));
}

// The line without its break. Nothing where the wait ended before there was one.
std::optional<std::string> lineFrom(const Asking& asking) {
    const UniqueFd endingSignals = openEndingSignals(); // looked at, never read: they stay pending
    if (!asking.processFd || !endingSignals)
        return std::nullopt; // nothing would end the wait
    std::string line;
    while (line.size() <= Question::longestAnswer) {
        pollfd events[] = {{endingSignals.get(), POLLIN, 0},
                           {STDOUT_FILENO, 0, 0},
                           {asking.socket.get(), POLLIN, 0},
                           {asking.processFd.get(), POLLIN, 0}};
        if (retryOnInterrupt([&] { return ::poll(events, 4, -1); }) < 0 || events[0].revents != 0 ||
            (events[1].revents & POLLERR) != 0)
            return std::nullopt;
        if (events[2].revents == 0)
            return std::nullopt; // the process is gone, and left nothing to read
        char byte = 0;
        if (retryOnInterrupt([&] { return ::recv(asking.socket.get(), &byte, 1, 0); }) != 1)
            return std::nullopt;
        if (byte == '\n')
            return line;
        line += byte;
    }
    return std::nullopt;
}

// Its standard input ends first, which is all that a process in order needs.
void giveUp(Asking asking) {
    asking.socket.reset();
    ::kill(asking.process, SIGTERM);
    constexpr int patience = 1'000; // milliseconds
    pollfd gone = {asking.processFd.get(), POLLIN, 0};
    if (!asking.processFd || retryOnInterrupt([&] { return ::poll(&gone, 1, patience); }) != 1)
        ::kill(asking.process, SIGKILL);
    retryOnInterrupt([&] { return ::waitpid(asking.process, nullptr, 0); });
}

} // namespace

bool mayAsk(const WorkerRequest& request, const Caller& caller) {
    return request.mayAsk && variableIs("VEILKEEP_MAY_ASK", "1") && !caller.hasRights && ::geteuid() != 0 &&
           !std::getenv("PKEXEC_UID") && !variableIs("VEILKEEP_NOBODY_THERE", "1") &&
           (variableIsSet("DISPLAY") || variableIsSet("WAYLAND_DISPLAY")) && !applicationBundlePath().empty();
}

std::optional<std::string> Question::ask() const {
    const auto bytes = packed(fields);
    if (!bytes || endingSignalArrived() || readerIsGone())
        return std::nullopt;
    auto asking = start(kind);
    if (!asking)
        return std::nullopt;
    const ssize_t sent = retryOnInterrupt([&] {
        return ::send(asking->socket.get(), bytes->data(), bytes->size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    });
    std::optional<std::string> answer;
    if (sent == static_cast<ssize_t>(bytes->size()))
        answer = lineFrom(*asking);
    if (!answer)
        giveUp(std::move(*asking));
    return answer;
}

bool readerIsGone() {
    pollfd output = {STDOUT_FILENO, 0, 0};
    return retryOnInterrupt([&] { return ::poll(&output, 1, 0); }) == 1 && (output.revents & POLLERR) != 0;
}

} // namespace veilkeep
