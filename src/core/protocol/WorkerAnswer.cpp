#include "core/protocol/WorkerAnswer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace veilkeep {
namespace {

constexpr std::int32_t failureWithoutCode = 1;

bool succeeded(WorkerOperation operation, int exitStatus) {
    switch (operation) {
    case WorkerOperation::Hide:
        return (exitStatus & 0xff) != 0;
    case WorkerOperation::Unhide:
        return exitStatus == 1;
    }
    return false;
}

std::optional<std::string_view> textAfter(std::string_view output, std::string_view marker) {
    const std::size_t place = output.find(marker);
    if (place == std::string_view::npos)
        return std::nullopt;
    return output.substr(place + marker.size());
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Blanks, one sign, digits; what follows is left aside and what does not fit becomes the nearest that does.
std::int32_t integerValue(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t largest = negative ? -std::int64_t{Limits::min()} : std::int64_t{Limits::max()};
    std::int64_t value = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        value = std::min(value * 10 + (text.front() - '0'), largest);
    return static_cast<std::int32_t>(negative ? -value : value);
}

std::optional<CloakWorkerResult> successIn(std::string_view output) {
    const auto fileName = textAfter(output, "NewFilename: ");
    return fileName ? std::optional(CloakWorkerResult::resultWithFileName(std::string(*fileName)))
                    : std::nullopt;
}

std::optional<CloakWorkerResult> failureIn(std::string_view output) {
    const auto number = textAfter(output, "Error: ");
    return number ? std::optional(CloakWorkerResult::resultWithErrorCode(integerValue(*number)))
                  : std::nullopt;
}

} // namespace

CloakWorkerResult workerAnswer(WorkerOperation operation, int exitStatus, std::string_view output) {
    const auto answer = succeeded(operation, exitStatus) ? successIn(output) : failureIn(output);
    return answer.value_or(CloakWorkerResult::resultWithErrorCode(failureWithoutCode));
}

std::optional<CloakWorkerResult> workerAnswer(std::string_view output) {
    const auto success = successIn(output);
    return success ? success : failureIn(output);
}

CloakWorkerResult workerAnswer(WorkerOperation operation, const ChildProcessResult& run) {
    if (run.end != ChildProcessResult::End::Exited || run.truncated)
        return CloakWorkerResult::resultWithErrorCode(failureWithoutCode);
    return workerAnswer(operation, run.status, run.output);
}

RecentsAnswer recentsAnswer(WorkerOperation operation, const ChildProcessResult& run) {
    const bool isHide = operation == WorkerOperation::Hide && run.end == ChildProcessResult::End::Exited;
    for (const RecentsAnswer answer : {RecentsAnswer::Yes, RecentsAnswer::No, RecentsAnswer::Unanswered})
        if (isHide && run.status == static_cast<int>(answer))
            return answer;
    return RecentsAnswer::NotAsked;
}

} // namespace veilkeep
