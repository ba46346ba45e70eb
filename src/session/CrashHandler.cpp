// From the handler on, nothing but calls that are safe in a handler of signals: no memory is asked for, no
// lock taken. The stack is written as addresses, and where its modules lie as the kernel tells it.

#include "session/CrashHandler.h"

#include <execinfo.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

constexpr int crashSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr unsigned int mostSeconds = 10; // for the note; then the process ends all the same

std::atomic<int> noteDescriptor = -1;
std::atomic<pid_t> ownProcess = 0; // not a child of it that runs another program soon
std::atomic<pid_t> crashedThread = 0;
std::array<char, 256> exceptionName{};
std::array<void*, 64> frames{};
alignas(16) std::array<char, 128 << 10> ownStack{}; // for a stack that has overflowed

// --- Writing ---

void put(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(noteDescriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void putNumber(std::uintmax_t number, unsigned int base) {
    char digits[24];
    std::size_t begin = sizeof digits;
    do {
        digits[--begin] = "0123456789abcdef"[number % base];
        number /= base;
    } while (number > 0);
    put({digits + begin, sizeof digits - begin});
}

void putHexadecimal(std::string_view before, std::uintmax_t number) {
    put(before);
    putNumber(number, 16);
}

// --- The modules that the stack goes through ---

// Reads /proc/self/maps, a character at a time: "7f00-7f10 r-xp 00001000 fe:01 1234   /usr/lib/libc.so.6".
class ModuleLines {
public:
    explicit ModuleLines(int frameCount) : m_frameCount(frameCount) {}

    void take(char character) {
        if (character == '\n') {
            if (m_isExecutable && m_nameSize > 0 && hasFrame())
                putModule();
            *this = ModuleLines(m_frameCount);
        } else if (character == ' ' && m_field < path) {
            m_field += m_wasBlank ? 0 : 1;
            m_wasBlank = true;
        } else {
            m_wasBlank = false;
            takeOfField(character);
        }
    }

private:
    enum Field { addresses, rights, offset, device, inode, path };

    void takeOfField(char character) {
        if (m_field == addresses && character == '-')
            m_begin = std::exchange(m_number, 0);
        else if (m_field == addresses || m_field == offset)
            addDigit(character);
        else if (m_field == rights)
            takeRight(character);
        else if (m_field == path)
            addToName(character);
    }
    void takeRight(char character) {
        m_isExecutable = m_isExecutable || character == 'x';
        if (m_number != 0)
            m_end = std::exchange(m_number, 0);
    }
    void addDigit(char character) {
        const int value = character <= '9' ? character - '0' : character - 'a' + 10;
        m_number = m_number * 16 + static_cast<std::uintptr_t>(value);
    }
    // Of the path its last part alone.
    void addToName(char character) {
        if (character == '/')
            m_nameSize = 0;
        else if (m_nameSize < m_name.size())
            m_name[m_nameSize++] = character;
    }
    bool hasFrame() const {
        for (int frame = 0; frame < m_frameCount; ++frame) {
            const auto address = reinterpret_cast<std::uintptr_t>(frames[static_cast<std::size_t>(frame)]);
            if (address >= m_begin && address < m_end)
                return true;
        }
        return false;
    }
    void putModule() const {
        putHexadecimal("module ", m_begin);
        putHexadecimal(" ", m_end);
        putHexadecimal(" ", m_number);
        put(" ");
        put({m_name.data(), m_nameSize});
        put("\n");
    }

    int m_frameCount;
    int m_field = addresses;
    bool m_wasBlank = false;
    bool m_isExecutable = false;
    std::uintptr_t m_number = 0, m_begin = 0, m_end = 0;
    std::array<char, 64> m_name{};
    std::size_t m_nameSize = 0;
};

void putModules(int frameCount) {
    const int maps = ::open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (maps < 0)
        return;
    ModuleLines lines(frameCount);
    char buffer[1024];
    for (;;) {
        const ssize_t count = ::read(maps, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        for (ssize_t at = 0; at < count; ++at)
            lines.take(buffer[at]);
    }
    ::close(maps);
}

// --- The handler ---

void putNote(int signal) {
    put("signal ");
    putNumber(static_cast<std::uintmax_t>(signal), 10);
    put("\ntime ");
    putNumber(static_cast<std::uintmax_t>(::time(nullptr)), 10);
    put("\nexception ");
    put(exceptionName.data());
    put("\n");
    const int count = ::backtrace(frames.data(), static_cast<int>(frames.size()));
    for (int frame = 0; frame < count; ++frame)
        putHexadecimal(frame == 0 ? "frames " : " ",
                       reinterpret_cast<std::uintptr_t>(frames[static_cast<std::size_t>(frame)]));
    put("\n");
    putModules(count);
    put("end\n");
}

// The signal waits until the handler returns, and then does what it does without one.
void endBy(int signal) {
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(signal, &usual, nullptr);
    ::raise(signal);
}

pid_t currentThread() {
    return static_cast<pid_t>(::syscall(SYS_gettid));
}

void crashed(int signal) {
    const int error = errno;
    pid_t nobody = 0;
    const bool isFirst = crashedThread.compare_exchange_strong(nobody, currentThread());
    while (!isFirst && nobody != currentThread())
        ::pause(); // until the process has ended, by the first one's signal
    if (isFirst && noteDescriptor >= 0 && ::getpid() == ownProcess) {
        ::alarm(mostSeconds);
        putNote(signal);
    }
    endBy(signal);
    errno = error;
}

void useOwnStack() {
    stack_t stack = {};
    stack.ss_sp = ownStack.data();
    stack.ss_size = ownStack.size();
    ::sigaltstack(&stack, nullptr);
}

bool isFor(int signal, void (*handler)(int)) {
    struct sigaction present = {};
    return ::sigaction(signal, nullptr, &present) == 0 && !(present.sa_flags & SA_SIGINFO) &&
           present.sa_handler == handler;
}

} // namespace

void crashHandler::install(int noteFile) {
    ::backtrace(frames.data(), 1); // loads what it needs
    useOwnStack();
    ownProcess = ::getpid();
    noteDescriptor = noteFile;
    struct sigaction action = {};
    action.sa_handler = crashed;
    action.sa_flags = SA_ONSTACK;
    for (const int signal : crashSignals)
        if (isFor(signal, SIG_DFL))
            ::sigaction(signal, &action, nullptr);
}

void crashHandler::remove() {
    for (const int signal : crashSignals)
        if (isFor(signal, crashed))
            (void)::signal(signal, SIG_DFL);
    noteDescriptor = -1;
    exceptionName[0] = '\0';
}

bool crashHandler::noteException(const char* typeName) {
    if (noteDescriptor < 0 || !isFor(SIGABRT, crashed))
        return false;
    std::strncpy(exceptionName.data(), typeName, exceptionName.size() - 1);
    return true;
}

} // namespace veilkeep
