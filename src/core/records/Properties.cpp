#include "core/records/Properties.h"

namespace veilkeep {

const std::string& bytesProperty(const PropertyDictionary& properties, PropertyKey key) {
    static const std::string none;
    const Value* const value = properties.find(key);
    if (!value)
        return none;
    if (const auto* bytes = std::get_if<Bytes>(&value->content()))
        return bytes->data;
    const auto* text = std::get_if<std::string>(&value->content());
    return text ? *text : none;
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
