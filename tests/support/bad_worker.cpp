// Plays every kind of child process. Its last argument is a list of steps separated by "|", each a word with
// or without "=value", done in order; at the end of the list it exits with status 0.
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Stops at the first error: the reader is gone and SIGPIPE ignored.
void print(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count < 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void printRubbish(std::size_t size) {
    print(std::string(size, 'x'));
}

// One line each: number, blank, what it is, pipes without their number.
void printDescriptors() {
    std::vector<int> numbers;
    DIR* directory = ::opendir("/proc/self/fd");
    while (const dirent* entry = ::readdir(directory))
        if (entry->d_name[0] != '.' && std::atoi(entry->d_name) != ::dirfd(directory))
            numbers.push_back(std::atoi(entry->d_name));
    ::closedir(directory);
    std::sort(numbers.begin(), numbers.end());
    for (const int number : numbers) {
        char target[4096];
        const std::string link = "/proc/self/fd/" + std::to_string(number);
        const ssize_t length = ::readlink(link.c_str(), target, sizeof target);
        const std::string_view text(target, length < 0 ? 0 : static_cast<std::size_t>(length));
        print(std::to_string(number) + " " + std::string(text.substr(0, text.find(':'))) + "\n");
    }
}

// Numbers of the signals that are blocked, then of those that are ignored.
void printSignals() {
    sigset_t blocked;
    ::sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (int number = 1; number < SIGRTMIN; ++number) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (::sigismember(&blocked, number) == 1)
            print("blocked " + std::to_string(number) + "\n");
        if (action.sa_handler == SIG_IGN)
            print("ignored " + std::to_string(number) + "\n");
    }
}

// Leaves a process that holds the pipe until nobody reads it any more.
void leaveGrandchild() {
    if (::fork() != 0)
        return;
    ::alarm(30);
    pollfd output = {STDOUT_FILENO, 0, 0};
    ::poll(&output, 1, -1);
    ::_exit(0);
}

void waitForWriter(const std::string& fifo) {
    const int fd = ::open(fifo.c_str(), O_RDONLY);
    ::close(fd);
}

// Ends without a word where there is none to come.
void waitForByte() {
    char byte = 0;
    if (::read(STDIN_FILENO, &byte, 1) != 1)
        ::_exit(0);
}

void act(std::string_view word, const std::string& value, char** arguments) {
    const int number = std::atoi(value.c_str());
    if (word == "out")
        print(value);
    else if (word == "nul")
        print(std::string_view("", 1));
    else if (word == "rubbish")
        printRubbish(static_cast<std::size_t>(number));
    else if (word == "endless")
        for (;;)
            printRubbish(65536);
    else if (word == "arguments")
        for (char** argument = arguments + 1; *argument; ++argument)
            print(std::string(*argument) + "\n");
    else if (word == "variable")
        print(value + "=" + (std::getenv(value.c_str()) ? std::getenv(value.c_str()) : "none") + "\n");
    else if (word == "descriptors")
        printDescriptors();
    else if (word == "signals")
        printSignals();
    else if (word == "close")
        ::close(STDOUT_FILENO);
    else if (word == "ignore")
        ::signal(number, SIG_IGN);
    else if (word == "grandchild")
        leaveGrandchild();
    else if (word == "wait")
        waitForWriter(value);
    else if (word == "byte")
        waitForByte();
    else if (word == "touch")
        ::close(::open(value.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600));
    else if (word == "pause")
        ::pause();
    else if (word == "signal")
        ::raise(number);
    else if (word == "exit")
        ::_exit(number);
    else
        ::_exit(99);
}

} // namespace

int main(int count, char** arguments) {
    ::alarm(30); // nothing that hangs outlives its test for long
    std::string_view steps = count > 1 ? arguments[count - 1] : "";
    while (!steps.empty()) {
        const std::string_view step = steps.substr(0, steps.find('|'));
        steps.remove_prefix(std::min(step.size() + 1, steps.size()));
        const std::size_t sign = step.find('=');
        const std::string value(sign == std::string_view::npos ? std::string_view() : step.substr(sign + 1));
        act(step.substr(0, sign), value, arguments);
    }
    ::_exit(0);
}
