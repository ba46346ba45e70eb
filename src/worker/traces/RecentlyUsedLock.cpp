#include "worker/traces/RecentlyUsedLock.h"

#include "core/base/SystemCall.h"
#include "core/base/TakeUntil.h"
#include "core/filesystem/FileStamp.h"
#include "core/filesystem/ReadWholeFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <charconv>
#include <climits>
#include <string_view>
#include <thread>

namespace veilkeep {
namespace {

std::string hostName() {
    char name[HOST_NAME_MAX + 1] = {};
    return ::gethostname(name, sizeof name - 1) == 0 ? name : "";
}

bool namesDeadProcess(std::string_view content) {
    const std::string_view number = takeUntil('\n', content);
    (void)takeUntil('\n', content); // the program
    const std::string_view host = takeUntil('\n', content);
    pid_t process = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), process);
    const bool isNumber = error == std::errc() && end == number.data() + number.size() && process > 0;
    return isNumber && (host.empty() || host == hostName()) && ::kill(process, 0) != 0 && errno == ESRCH;
}

// The flock says that no living process holds it and that nobody else is just taking it away.
void removeWhenLeftBehind(const std::string& path) {
    FileStamp stamp;
    const auto content = readWholeFile(path, 4096, &stamp);
    if (!content || !namesDeadProcess(*content))
        return;
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return;
    struct stat status = {};
    const auto atPath = fileStamp(path);
    if (::fstat(file.get(), &status) == 0 && FileStamp::of(status) == stamp && atPath && *atPath == stamp)
        ::unlink(path.c_str());
}

} // namespace

RecentlyUsedLock::RecentlyUsedLock(const std::string& file, std::chrono::milliseconds wait)
    : m_path(file + ".lock") {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (!tryLock() && errno == EEXIST && std::chrono::steady_clock::now() < deadline) {
        removeWhenLeftBehind(m_path);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

bool RecentlyUsedLock::tryLock() {
    UniqueFd lock(::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    if (!lock)
        return false;
    ::flock(lock.get(), LOCK_EX | LOCK_NB);
    const std::string content = std::to_string(::getpid()) + "\ncloakTraces\n" + hostName() + "\n";
    const ssize_t written = ::write(lock.get(), content.data(), content.size());
    m_lock = std::move(lock);
    return written >= 0; // the file itself is the lock; what is in it only tells whose
}

RecentlyUsedLock::~RecentlyUsedLock() {
    if (m_lock)
        ::unlink(m_path.c_str());
}

} // namespace veilkeep
