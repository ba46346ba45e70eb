#pragma once

#include "core/tracking/AliasRecord.h"

#include <optional>
#include <string>

namespace veilkeep {

// The bytes of an alias record of the item at the path, which is not followed itself. Where nothing is at
// the path the record still holds it. Nothing for an empty path, a path with a NUL, and where the item
// cannot be looked at for any other reason. Reads a few attributes and no content; any thread.
std::optional<std::string> aliasRecordFromPath(const std::string& path);

} // namespace veilkeep
