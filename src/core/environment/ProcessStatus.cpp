#include "core/environment/ProcessStatus.h"

#include "core/base/TakeUntil.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/filesystem/ResolvedPath.h"

#include <sys/stat.h>

#include <charconv>

namespace veilkeep {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 16;

template <class Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// "0::PATH" among lines of older hierarchies.
std::string unifiedGroup(const std::string& content) {
    for (std::string_view rest = content; !rest.empty();)
        if (const std::string_view line = takeUntil('\n', rest); line.starts_with("0::"))
            return std::string(line.substr(3));
    return {};
}

} // namespace

// The name stands in parentheses and may hold blanks and parentheses itself.
std::optional<ProcessStatus> processStatusFromLine(const std::string& line) {
    constexpr int parentField = 4, startField = 22;
    const std::string_view all = line;
    const std::size_t begin = all.find('('), end = all.rfind(')');
    if (begin == std::string_view::npos || end == std::string_view::npos || begin < 1 || end < begin)
        return std::nullopt;
    const auto id = numberIn<pid_t>(all.substr(0, begin - 1));
    std::optional<pid_t> parent;
    std::optional<std::uint64_t> startTime;
    std::string_view rest = all.substr(end + 1);
    takeUntil(' ', rest);
    for (int field = 3; field <= startField && !rest.empty(); ++field) {
        const std::string_view text = takeUntil(' ', rest);
        if (field == parentField)
            parent = numberIn<pid_t>(text);
        if (field == startField)
            startTime = numberIn<std::uint64_t>(text);
    }
    if (!id || !parent || !startTime)
        return std::nullopt;
    ProcessStatus status;
    status.id = *id;
    status.parent = *parent;
    status.name = all.substr(begin + 1, end - begin - 1);
    status.startTime = *startTime;
    return status;
}

std::optional<ProcessStatus> ProcessStatus::of(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    struct stat owner = {};
    const auto line = readWholeFile(folder + "/stat", largestFile);
    auto status = line ? processStatusFromLine(*line) : std::nullopt;
    if (!status || ::stat(folder.c_str(), &owner) != 0)
        return std::nullopt;
    status->user = owner.st_uid;
    status->program = readLink(folder + "/exe").value_or(std::string());
    status->controlGroup = unifiedGroup(readWholeFile(folder + "/cgroup", largestFile).value_or({}));
    return status;
}

} // namespace veilkeep
