#pragma once

#include "core/base/Result.h"
#include "core/records/PropertyDictionary.h"

#include <string>

namespace veilkeep {

// What a worker leaves behind for an item whose new place the application would not learn otherwise.
struct InProgressRecord {
    std::string originalPath; // the visible path
    std::string currentPath;  // where the item lies now
    int errorCode = 0;
    int action = 0; // the state that the item is in: 1 hidden, 0 visible

    bool operator==(const InProgressRecord&) const = default;
};

// The record as a dictionary of "OriginalPath", "CurrentPath", "Error" (bytes: a property list of its own
// with the number "code") and "Action".
Result<PropertyDictionary> dictionaryFromRecord(const InProgressRecord& record);

// The other way; ErrorCode::Damaged when one of the four is missing or of a wrong kind. An "Error" that is
// there but cannot be read has the code 1. Lives in a source of its own, for it needs the reader of property
// lists.
Result<InProgressRecord> recordFromDictionary(const PropertyDictionary& dictionary);

} // namespace veilkeep
