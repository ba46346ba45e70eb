#include "tests/support/RunProgram.h"

#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <utility>

namespace veilkeep::test {
namespace {

std::pair<UniqueFd, UniqueFd> makePipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("pipe2");
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

void becomeUser(unsigned int user) {
    if (::setgroups(0, nullptr) != 0 || ::setresgid(user, user, user) != 0 ||
        ::setresuid(user, user, user) != 0)
        ::_exit(125);
}

[[noreturn]] void runChild(const std::vector<std::string>& arguments, const RunOptions& options, int output,
                           int errors) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    if (!options.directory.empty() && ::chdir(options.directory.c_str()) != 0)
        ::_exit(124);
    if (options.asUser != 0)
        becomeUser(options.asUser);
    if (options.inChild)
        options.inChild();
    ::execv(argv[0], argv.data());
    ::_exit(123);
}

// Both at once, so that neither pipe fills up while the other is waited for.
void readBoth(int output, int errors, ProgramRun& run) {
    pollfd waiting[] = {{output, POLLIN, 0}, {errors, POLLIN, 0}};
    std::string* texts[] = {&run.output, &run.errors};
    for (int open = 2; open > 0;) {
        if (::poll(waiting, 2, -1) < 0 && errno != EINTR)
            throw std::runtime_error("poll");
        for (int index = 0; index < 2; ++index) {
            if (waiting[index].fd < 0 || waiting[index].revents == 0)
                continue;
            char buffer[65536];
            const ssize_t count = ::read(waiting[index].fd, buffer, sizeof buffer);
            if (count > 0) {
                texts[index]->append(buffer, static_cast<std::size_t>(count));
            } else {
                waiting[index].fd = -1;
                --open;
            }
        }
    }
}

} // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const RunOptions& options) {
    auto output = makePipe();
    auto errors = makePipe();
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("fork");
    if (child == 0)
        runChild(arguments, options, output.second.get(), errors.second.get());
    output.second.reset();
    errors.second.reset();
    ProgramRun run;
    readBoth(output.first.get(), errors.first.get(), run);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return run;
}

std::string bundledProgram(const std::string& name) {
    return VEILKEEP_PROGRAMS "/" + name;
}

bool isRoot() {
    return ::geteuid() == 0;
}

} // namespace veilkeep::test
