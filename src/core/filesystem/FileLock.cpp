#include "core/filesystem/FileLock.h"

#include "core/base/SystemCall.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace veilkeep {

Result<void> lockExclusively(int file, const std::string& path, std::chrono::milliseconds wait) {
    using std::chrono::steady_clock;
    const auto deadline = steady_clock::now() + wait;
    std::chrono::milliseconds pause(1);
    while (retryOnInterrupt([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) != 0) {
        if (errno != EWOULDBLOCK || steady_clock::now() >= deadline)
            return Error::system("flock", path, errno);
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::milliseconds(8));
    }
    return {};
}

} // namespace veilkeep
