#include "worker/RequestInput.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;

bool waitUntilReadable(int descriptor, Clock::time_point deadline) {
    pollfd waiting = {descriptor, POLLIN, 0};
    return retryOnInterrupt([&] {
               const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
               return ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
           }) == 1;
}

std::optional<std::string> readToTheEnd(int descriptor, Clock::time_point deadline) {
    std::string bytes;
    std::array<char, 16384> buffer;
    while (bytes.size() <= RequestInput::maximumSize) {
        if (!waitUntilReadable(descriptor, deadline))
            return std::nullopt;
        const ssize_t count =
            retryOnInterrupt([&] { return ::read(descriptor, buffer.data(), buffer.size()); });
        if (count == 0)
            return bytes;
        if (count > 0)
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        else if (errno != EAGAIN)
            return std::nullopt;
    }
    return std::nullopt;
}

bool isCleanAbsolutePath(const std::string& path) {
    return path.starts_with('/') && cleanPath(path) == path;
}

} // namespace

std::optional<RequestInput> RequestInput::read(int descriptor, std::chrono::milliseconds patience) {
    const auto bytes = readToTheEnd(descriptor, Clock::now() + patience);
    if (!bytes || bytes->size() > maximumSize || std::count(bytes->begin(), bytes->end(), '\0') != 2 ||
        bytes->back() != '\0')
        return std::nullopt;
    const std::size_t middle = bytes->find('\0');
    RequestInput input{bytes->substr(0, middle), bytes->substr(middle + 1, bytes->size() - middle - 2)};
    if (!isCleanAbsolutePath(input.path) || !isCleanAbsolutePath(input.inProgressFolder))
        return std::nullopt;
    return input;
}

} // namespace veilkeep
