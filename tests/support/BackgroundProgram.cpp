#include "tests/support/BackgroundProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veilkeep::test {

BackgroundProgram::BackgroundProgram(const std::vector<std::string>& arguments,
                                     const std::function<void()>& inChild) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("pipe2");
    m_output.reset(ends[0]);
    const UniqueFd writer(ends[1]);
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that crashes leaves nothing behind that CTest waits for
        ::dup2(writer.get(), STDOUT_FILENO);
        if (inChild)
            inChild();
        ::execv(argv[0], argv.data());
        ::_exit(123);
    }
}

BackgroundProgram::~BackgroundProgram() {
    if (m_process > 0)
        end(SIGTERM);
}

int BackgroundProgram::end(int signal) {
    int status = 0;
    const pid_t process = std::exchange(m_process, -1);
    ::kill(process, signal);
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string BackgroundProgram::readLine() {
    std::string line;
    for (char character = 0; ::read(m_output.get(), &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

std::string BackgroundProgram::readSome() {
    std::string bytes(4096, '\0');
    bytes.resize(
        static_cast<std::size_t>(std::max<ssize_t>(::read(m_output.get(), bytes.data(), bytes.size()), 0)));
    return bytes;
}

} // namespace veilkeep::test
