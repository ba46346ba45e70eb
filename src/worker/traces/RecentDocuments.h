#pragma once

#include "core/base/Result.h"
#include "worker/traces/TracedItems.h"

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// Removes KDE's desktop files of recent documents that lead to one of the items, and answers whether there
// were any.
Result<bool> removeRecentDocuments(const std::string& directory, TracedItems& items);

// The path that the text of such a file leads to; nothing where it leads to no file of this machine.
std::optional<std::string> pathOfRecentDocument(std::string_view text, const std::string& home);

} // namespace veilkeep
