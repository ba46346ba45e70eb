#pragma once

#include "core/base/Result.h"
#include "core/tracking/AliasRecord.h"

#include <optional>
#include <string>

namespace veilkeep {

// What is at the path now, which is not followed itself. Any thread.
Result<AliasRecord> describeItemAt(const std::string& path);

// The bytes of an alias record of the item at the path, which is not followed itself. Where nothing is at
// the path the record still holds it. Nothing for an empty path, a path with a NUL, and where the item
// cannot be looked at for any other reason. Reads a few attributes and no content; any thread.
std::optional<std::string> aliasRecordFromPath(const std::string& path);

} // namespace veilkeep
