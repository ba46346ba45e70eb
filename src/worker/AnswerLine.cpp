#include "worker/AnswerLine.h"

#include "core/base/SystemCall.h"

#include <poll.h>
#include <unistd.h>

namespace veilkeep {
namespace {

bool waitUntilWritable(int descriptor) {
    constexpr int patience = 10'000; // milliseconds
    pollfd waiting = {descriptor, POLLOUT, 0};
    return retryOnInterrupt([&] { return ::poll(&waiting, 1, patience); }) == 1;
}

} // namespace

std::string newFilenameLine(std::string_view path) {
    return "NewFilename: " + std::string(path);
}

std::string errorLine(WorkerError error) {
    return "Error: " + std::to_string(static_cast<int>(error));
}

bool deliver(int descriptor, std::string_view line) {
    while (!line.empty()) {
        const ssize_t count = retryOnInterrupt([&] { return ::write(descriptor, line.data(), line.size()); });
        if (count > 0)
            line.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EAGAIN || !waitUntilWritable(descriptor))
            return false;
    }
    return true;
}

} // namespace veilkeep
