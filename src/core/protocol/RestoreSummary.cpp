#include "core/protocol/RestoreSummary.h"

#include <charconv>
#include <optional>

namespace veilkeep {
namespace {

// The number after the mark at the front of the text, which both are taken from.
template <class Number>
std::optional<Number> take(std::string_view& text, std::string_view mark) {
    if (!text.starts_with(mark))
        return std::nullopt;
    Number number = 0;
    const char* const begin = text.data() + mark.size();
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), number);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

} // namespace

std::string summaryText(const RestoreSummary& summary) {
    if (summary.error != WorkerError::Success)
        return "Error: " + std::to_string(static_cast<int>(summary.error));
    return "Found: " + std::to_string(summary.found) + "\nUnreadable: " + std::to_string(summary.unreadable) +
           "\n";
}

RestoreSummary restoreSummaryFromText(std::string_view text) {
    const RestoreSummary unknown{WorkerError::Unknown, 0, 0};
    if (const auto number = take<int>(text, "Error: "))
        return {*number > 0 && *number <= static_cast<int>(WorkerError::InputOutput)
                    ? static_cast<WorkerError>(*number)
                    : WorkerError::Unknown,
                0, 0};
    const auto found = take<std::uint64_t>(text, "Found: ");
    const auto unreadable = take<std::uint64_t>(text, "\nUnreadable: ");
    if (!found || !unreadable || text != "\n")
        return unknown;
    return {WorkerError::Success, *found, *unreadable};
}

} // namespace veilkeep
