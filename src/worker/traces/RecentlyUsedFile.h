#pragma once

#include "core/base/Result.h"
#include "worker/traces/TracedItems.h"

#include <string>

namespace veilkeep {

// Takes the bookmarks of the items out of the file that GTK and KDE programs list recent documents from, and
// answers whether there were any. Every other byte, owner, group and mode stay. The file is replaced in one
// step and not synced: what a power cut may take is a list of files opened lately. A file that another user
// owns, or that is no regular file, is left alone.
Result<bool> removeFromRecentlyUsed(const std::string& file, TracedItems& items);

} // namespace veilkeep
