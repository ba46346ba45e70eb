#pragma once

#include "core/records/PropertyDictionary.h"

#include <cstdint>
#include <string_view>

// Typed reading of one property of a record. A key that is absent or holds a value of another kind reads as
// zero, false or empty.
namespace veilkeep {

// Of bytes and of text. The view lasts until the property is set.
std::string_view bytesProperty(const PropertyDictionary& properties, PropertyKey key);

// A value that fits the other signedness only is read by its bits: all ones is -1.
std::int64_t integerProperty(const PropertyDictionary& properties, PropertyKey key);
std::uint64_t unsignedProperty(const PropertyDictionary& properties, PropertyKey key);

bool booleanProperty(const PropertyDictionary& properties, PropertyKey key);

} // namespace veilkeep
