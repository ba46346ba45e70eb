#pragma once

#include "core/tracking/AliasRecord.h"

#include <optional>
#include <string>
#include <vector>

namespace veilkeep {

struct NearbyFinding {
    std::optional<std::string> path;      // where the item is
    std::vector<std::string> directories; // else those that it was in: each form of them that exists
};

// Looks at the record's place and at the other forms of it and of each directory above, as the record spells
// it and below each mount of its volume. Reads no directory.
NearbyFinding searchNearby(const AliasRecord& record);

} // namespace veilkeep
