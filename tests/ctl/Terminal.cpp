#include "tests/ctl/Terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <stdexcept>

namespace veilkeep::test {
namespace {

constexpr int readLimit = 20'000; // ms
constexpr int stopped = 1000;     // beside exit statuses and, negative, signals

[[noreturn]] void beProgram(const std::vector<std::string>& arguments, const std::string& directory) {
    ::setpgid(0, 0);
    ::signal(SIGTTOU, SIG_IGN); // it is not in the foreground yet
    ::tcsetpgrp(STDIN_FILENO, ::getpid());
    ::signal(SIGTTOU, SIG_DFL);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    if (::chdir(directory.c_str()) == 0)
        ::execv(argv[0], argv.data());
    ::_exit(123);
}

[[noreturn]] void beParent(pid_t program, int fromTest, int toTest) {
    int status = 0;
    while (::waitpid(program, &status, WUNTRACED) == program) {
        int told = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        if (WIFSTOPPED(status))
            told = stopped;
        (void)!::write(toTest, &told, sizeof told);
        char byte = 0;
        (void)!::read(fromTest, &byte, 1); // the end of the program's terminal is the test's to choose
        if (told != stopped)
            break;
        ::kill(program, SIGCONT);
    }
    ::_exit(0);
}

} // namespace

Terminal::Terminal(const std::vector<std::string>& arguments, const std::string& directory) {
    int toParent[2], fromParent[2];
    if (::pipe2(toParent, O_CLOEXEC) != 0 || ::pipe2(fromParent, O_CLOEXEC) != 0)
        throw std::runtime_error("pipe2");
    int screen = -1;
    m_parent = ::forkpty(&screen, nullptr, nullptr, nullptr);
    if (m_parent == 0) {
        ::close(toParent[1]);
        const pid_t program = ::fork();
        if (program == 0)
            beProgram(arguments, directory);
        beParent(program, toParent[0], fromParent[1]);
    }
    m_screen.reset(screen);
    m_toParent.reset(toParent[1]);
    m_fromParent.reset(fromParent[0]);
    ::close(toParent[0]);
    ::close(fromParent[1]);
}

Terminal::~Terminal() {
    m_screen.reset(); // hangs up
    m_toParent.reset();
    ::waitpid(m_parent, nullptr, 0);
}

void Terminal::type(const std::string& keys) {
    (void)!::write(m_screen.get(), keys.data(), keys.size());
}

std::string Terminal::readUntil(const std::string& text) {
    std::string shown;
    while (text.empty() || shown.find(text) == std::string::npos) {
        pollfd waited{m_screen.get(), POLLIN, 0};
        char byte = 0;
        if (::poll(&waited, 1, text.empty() ? 0 : readLimit) <= 0 || ::read(m_screen.get(), &byte, 1) != 1)
            break;
        shown += byte;
    }
    return shown;
}

bool Terminal::showsTyping() const {
    termios modes = {};
    return ::tcgetattr(m_screen.get(), &modes) == 0 && (modes.c_lflag & ECHO);
}

int Terminal::nextFromParent() {
    int told = 0;
    return ::read(m_fromParent.get(), &told, sizeof told) == sizeof told ? told : -1;
}

bool Terminal::waitUntilStopped() {
    return nextFromParent() == stopped;
}

void Terminal::goOn() {
    (void)!::write(m_toParent.get(), "", 1);
}

int Terminal::waitForEnd() {
    return nextFromParent();
}

} // namespace veilkeep::test
