#include "app/ask/AskRequest.h"

#include "core/base/SystemCall.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <limits>

namespace veilkeep {
namespace {

using Clock = std::chrono::steady_clock;

struct KnownKind {
    std::string_view word;
    AskRequest::Kind kind;
    std::size_t leastFields, mostFields;
};

constexpr KnownKind knownKinds[] = {
    {"overwrite", AskRequest::Kind::Overwrite, 4, 4},
    {"recents", AskRequest::Kind::Recents, 0, 0},
    {"recents-applications", AskRequest::Kind::RecentsApplications, 2,
     std::numeric_limits<std::size_t>::max()},
    {"error", AskRequest::Kind::GenericError, 2, 2},
};

bool isReadable(int descriptor, Clock::time_point deadline) {
    pollfd waiting = {descriptor, POLLIN, 0};
    return retryOnInterrupt([&] {
               const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
               return ::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
           }) == 1;
}

// Byte by byte, since what comes after the last NUL is not ours to take.
std::optional<std::vector<std::string>> readFields(int descriptor, Clock::time_point deadline) {
    std::vector<std::string> fields;
    std::string field;
    for (std::size_t count = 0; count < AskRequest::maximumSize; ++count) {
        char byte = 0;
        if (!isReadable(descriptor, deadline) ||
            retryOnInterrupt([&] { return ::read(descriptor, &byte, 1); }) != 1)
            return std::nullopt;
        if (byte != '\0') {
            field += byte;
            continue;
        }
        if (field.empty())
            return fields;
        fields.push_back(std::move(field));
        field.clear();
    }
    return std::nullopt;
}

} // namespace

std::optional<AskRequest> AskRequest::read(std::string_view kind, int descriptor,
                                           std::chrono::milliseconds patience) {
    const auto* const known = std::ranges::find(knownKinds, kind, &KnownKind::word);
    if (known == std::end(knownKinds))
        return std::nullopt;
    auto fields = readFields(descriptor, Clock::now() + patience);
    if (!fields || fields->size() < known->leastFields || fields->size() > known->mostFields)
        return std::nullopt;
    return AskRequest{known->kind, *std::move(fields)};
}

} // namespace veilkeep
