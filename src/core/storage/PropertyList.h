#pragma once

#include "core/base/Result.h"
#include "core/records/PropertyDictionary.h"

#include <cstddef>
#include <string>
#include <string_view>

// XML property lists: small files, in-progress records, user defaults, Info.plist.
namespace veilkeep {

inline constexpr std::size_t maximumPropertyListSize = 1u << 20; // bytes

// The dictionary at the root of an XML property list in UTF-8. Dates are read as text. Of a key that comes
// twice the last value counts. TooLarge above maximumPropertyListSize; Damaged for anything that is not
// well-formed, that holds an element or attribute of another kind, or that nests lists and dictionaries
// deeper than maximumValueNesting.
Result<PropertyDictionary> parsePropertyList(std::string_view xml);

// Text that XML cannot carry unchanged goes in as data, and comes back as Bytes. Null has no form in a
// property list and is left out. InvalidArgument for a key that XML cannot carry and for nesting that the
// reader refuses; TooLarge for a list that it refuses.
Result<std::string> writePropertyList(const PropertyDictionary& dictionary);

} // namespace veilkeep
