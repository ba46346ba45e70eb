#include "core/records/Properties.h"

namespace veilkeep {

std::string_view bytesProperty(const PropertyDictionary& properties, PropertyKey key) {
    const Value* const value = properties.find(key);
    return value ? value->asString().value_or(std::string_view()) : std::string_view();
}

std::int64_t integerProperty(const PropertyDictionary& properties, PropertyKey key) {
    const Value* const value = properties.find(key);
    if (!value)
        return 0;
    if (const auto number = value->asInteger())
        return *number;
    return static_cast<std::int64_t>(value->asUnsigned().value_or(0));
}

std::uint64_t unsignedProperty(const PropertyDictionary& properties, PropertyKey key) {
    const Value* const value = properties.find(key);
    if (!value)
        return 0;
    if (const auto number = value->asUnsigned())
        return *number;
    return static_cast<std::uint64_t>(value->asInteger().value_or(0));
}

bool booleanProperty(const PropertyDictionary& properties, PropertyKey key) {
    const Value* const value = properties.find(key);
    return value && value->asBoolean().value_or(false);
}

} // namespace veilkeep
