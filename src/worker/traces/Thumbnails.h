#pragma once

#include "core/base/Result.h"
#include "worker/traces/TracedItems.h"

#include <string>

namespace veilkeep {

// Removes the thumbnails of the items and of everything that lies below them now, in every size, and the
// notes of programs that could make none. Answers whether there were any.
Result<bool> removeThumbnails(const std::string& thumbnails, const TracedItems& items);

} // namespace veilkeep
