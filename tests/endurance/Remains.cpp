#include "tests/endurance/Remains.h"

#include "tests/support/OpenDescriptors.h"

#include <sys/wait.h>

#include <cerrno>
#include <filesystem>

#ifdef __SANITIZE_ADDRESS__
// Not every compiler brings the sanitizers' headers.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
extern "C" int __lsan_do_recoverable_leak_check();
#endif

namespace veilkeep::test {
namespace {

std::ptrdiff_t runningThreads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// Without taking its status from whoever waits for it.
bool someChild() {
    siginfo_t info = {};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 || errno != ECHILD;
}

std::string descriptorList() {
    std::string list;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        list += "\n  " + entry.path().filename().string() + " " +
                std::filesystem::read_symlink(entry.path(), error).string();
    return list;
}

} // namespace

Remains Remains::now() {
    return {openDescriptors(), runningThreads(), someChild()};
}

std::string Remains::beyond(const Remains& before) const {
    std::string text;
    if (descriptors != before.descriptors)
        text += std::to_string(descriptors) + " descriptors instead of " +
                std::to_string(before.descriptors) + ":" + descriptorList() + "\n";
    if (threads != before.threads)
        text += std::to_string(threads) + " threads instead of " + std::to_string(before.threads) + "\n";
    if (hasChild)
        text += "a child process\n";
    return text;
}

#ifdef __SANITIZE_ADDRESS__
std::size_t heapBytes() {
    return __sanitizer_get_current_allocated_bytes();
}

bool hasLeaks() {
    return __lsan_do_recoverable_leak_check() != 0;
}
#else
std::size_t heapBytes() {
    return 0;
}

bool hasLeaks() {
    return false;
}
#endif

} // namespace veilkeep::test
