#include "core/protocol/InProgressRecord.h"
#include "core/storage/PropertyList.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

std::optional<std::string> textOf(const PropertyDictionary& dictionary, PropertyKey key) {
    const Value* value = dictionary.find(key);
    const auto text = value ? value->asString() : std::nullopt;
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::optional<int> numberOf(const PropertyDictionary& dictionary, PropertyKey key) {
    const Value* value = dictionary.find(key);
    const std::optional<std::int64_t> number = value ? value->asInteger() : std::nullopt;
    return number && std::in_range<int>(*number) ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

int codeOf(const std::string& error) {
    constexpr int unreadable = 1;
    const Result<PropertyDictionary> content = parsePropertyList(error);
    return content ? numberOf(*content, "code").value_or(unreadable) : unreadable;
}

} // namespace

Result<InProgressRecord> recordFromDictionary(const PropertyDictionary& dictionary) {
    const auto originalPath = textOf(dictionary, "OriginalPath");
    const auto currentPath = textOf(dictionary, "CurrentPath");
    const auto error = textOf(dictionary, "Error");
    const auto action = numberOf(dictionary, "Action");
    if (!originalPath || !currentPath || !error || !action)
        return Error::damaged("read in-progress record");
    return InProgressRecord{*originalPath, *currentPath, codeOf(*error), *action};
}

} // namespace veilkeep
