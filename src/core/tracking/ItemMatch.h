#pragma once

#include "core/tracking/AliasRecord.h"

namespace veilkeep {

// Where a candidate for an item lies, as seen from where the item was.
enum class Closeness {
    RecordedPath, // at the very same place
    OtherForm,    // where hiding or bringing back puts the item or a directory above it
    Elsewhere,
};

// Whether what was found is the item of the record. The farther away, the more has to agree: at its own place
// it is the item unless something speaks against it, elsewhere only if its marks prove it.
bool isTheItem(const AliasRecord& known, const AliasRecord& found, Closeness closeness);

// Whether nothing but the item itself could agree as the two do.
bool isProvenToBe(const AliasRecord& known, const AliasRecord& found);

} // namespace veilkeep
