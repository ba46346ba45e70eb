#include "core/process/ChildProcess.h"

#include "core/base/SystemCall.h"
#include "core/process/ChildWait.h"
#include "core/process/SpawnSettings.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::chrono::seconds patienceWithUnwanted(1);

struct Pipe {
    UniqueFd reader, writer;
};

// Moves a descriptor that got a free number among 0 to 2 out of the way of what the child has there.
bool keepAboveStandardStreams(UniqueFd& fd) {
    if (fd.get() < SpawnSettings::firstOtherDescriptor)
        fd = UniqueFd(::fcntl(fd.get(), F_DUPFD_CLOEXEC, SpawnSettings::firstOtherDescriptor));
    return static_cast<bool>(fd);
}

Result<Pipe> pipeOf(int reader, int writer) {
    Pipe pipe = {UniqueFd(reader), UniqueFd(writer)};
    if (!keepAboveStandardStreams(pipe.reader) || !keepAboveStandardStreams(pipe.writer))
        return Error::system("fcntl", {}, errno);
    return pipe;
}

Result<Pipe> makePipe() {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return Error::system("pipe2", {}, errno);
    return pipeOf(ends[0], ends[1]);
}

// A socket can be written to without a SIGPIPE where the reader is gone.
Result<Pipe> makeSocketPair() {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return Error::system("socketpair", {}, errno);
    return pipeOf(ends[0], ends[1]);
}

// What has the number 2 but is closed on exec is some file of this process, not a standard error.
bool hasStandardError() {
    const int flags = ::fcntl(STDERR_FILENO, F_GETFD);
    return flags >= 0 && (flags & FD_CLOEXEC) == 0;
}

void keepExitStatuses() {
    struct sigaction action = {};
    if (::sigaction(SIGCHLD, nullptr, &action) != 0 ||
        (action.sa_handler != SIG_IGN && (action.sa_flags & SA_NOCLDWAIT) == 0))
        return;
    if (action.sa_handler == SIG_IGN)
        action.sa_handler = SIG_DFL;
    action.sa_flags &= ~SA_NOCLDWAIT;
    ::sigaction(SIGCHLD, &action, nullptr); // fails for bad arguments only
}

// Nothing for an empty input. A file in memory, unlike a pipe, takes all of it before the child reads.
Result<UniqueFd> openInput(const std::string& input) {
    if (input.empty())
        return UniqueFd();
    UniqueFd file(::memfd_create("input", MFD_CLOEXEC));
    if (!file || !keepAboveStandardStreams(file))
        return Error::system("memfd_create", {}, errno);
    std::size_t written = 0;
    while (written < input.size()) {
        const ssize_t count = retryOnInterrupt(
            [&] { return ::write(file.get(), input.data() + written, input.size() - written); });
        if (count <= 0)
            return Error::system("write", {}, count < 0 ? errno : EIO);
        written += static_cast<std::size_t>(count);
    }
    if (::lseek(file.get(), 0, SEEK_SET) != 0)
        return Error::system("lseek", {}, errno);
    return file;
}

std::string_view nameOfVariable(std::string_view variable) {
    return variable.substr(0, variable.find('='));
}

std::vector<std::string> environmentFor(const ChildProcessOptions& options) {
    const auto isReplaced = [&](std::string_view inherited) {
        return std::ranges::any_of(options.variables, [&](const std::string& variable) {
            return nameOfVariable(variable) == nameOfVariable(inherited);
        });
    };
    std::vector<std::string> environment = options.variables;
    for (char* const* variable = environ; options.inheritEnvironment && *variable; ++variable)
        if (!isReplaced(*variable))
            environment.emplace_back(*variable);
    return environment;
}

// input may be none: then there is nothing to be read.
Result<pid_t> spawn(const std::string& program, const std::vector<std::string>& arguments, int input,
                    int output, const ChildProcessOptions& options) {
    SpawnSettings settings;
    if (input >= 0)
        settings.duplicate(input, STDIN_FILENO);
    else
        settings.openNullDevice(STDIN_FILENO);
    settings.duplicate(output, STDOUT_FILENO);
    if (options.discardErrors || !hasStandardError())
        settings.openNullDevice(STDERR_FILENO);
    settings.closeOthers();
    if (!options.directory.empty())
        settings.startIn(options.directory);
    settings.useCleanSignals(options.deferEndingSignals);

    const std::vector<std::string> environment = environmentFor(options);
    pid_t child = -1;
    if (const int failure = settings.spawn(child, program, arguments, pointersTo(environment).data()))
        return Error::system("posix_spawn", program, failure);
    return child;
}

bool holdsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

} // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           ChildProcessOptions options)
    : m_options(std::move(options)) {
    if (const Result<void> started = start(program, arguments); !started)
        m_trouble = started.error();
}

ChildProcess::~ChildProcess() {
    if (!m_wait)
        return;
    m_options.tick = nullptr;
    m_hold.reset();
    m_wait->endAfter(patienceWithUnwanted);
    m_wait->untilGone();
}

Result<void> ChildProcess::start(const std::string& program, const std::vector<std::string>& arguments) {
    // The child would see a shorter path, perhaps that of another item.
    if (holdsNul(program) || holdsNul(m_options.directory) || std::ranges::any_of(arguments, holdsNul) ||
        std::ranges::any_of(m_options.variables, holdsNul))
        return Error{ErrorCode::InvalidArgument, "posix_spawn", program, 0};

    keepExitStatuses();
    Result<UniqueFd> input = openInput(m_options.input);
    if (!input)
        return input.error();
    if (m_options.isHeld) {
        Result<Pipe> hold = makeSocketPair();
        if (!hold)
            return hold.error();
        *input = std::move(hold->reader);
        m_hold = std::move(hold->writer);
    }
    Result<Pipe> pipe = makePipe();
    if (!pipe)
        return pipe.error();
    const Result<pid_t> child = spawn(program, arguments, input->get(), pipe->writer.get(), m_options);
    if (!child)
        return child.error();
    pipe->writer.reset();
    m_wait = std::make_unique<ChildWait>(*child, std::move(pipe->reader), m_options);
    return {};
}

bool ChildProcess::release() {
    return m_wait && m_hold &&
           retryOnInterrupt([&] { return ::send(m_hold.get(), "", 1, MSG_NOSIGNAL); }) == 1;
}

ChildProcessResult ChildProcess::untilGone() {
    m_hold.reset();
    if (m_wait)
        return std::exchange(m_wait, nullptr)->untilGone();
    ChildProcessResult result;
    result.error = m_trouble;
    return result;
}

std::string ChildProcessResult::howItEnded() const {
    switch (end) {
    case End::Exited:
        return "exit status " + std::to_string(status);
    case End::Signalled:
        return "signal " + std::to_string(status);
    case End::NotStarted:
    case End::Unknown:
        break;
    }
    return error.operation + ": " + std::strerror(error.systemError);
}

ChildProcessResult runChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                                   const ChildProcessOptions& options) {
    return ChildProcess(program, arguments, options).untilGone();
}

} // namespace veilkeep
