#pragma once

#include "core/base/Result.h"

#include <functional>
#include <optional>
#include <string>

namespace veilkeep {

// The XML of a bookmark file without those bookmarks whose URI the question is answered "yes" for; every
// other byte stays. Nothing where no bookmark goes. What GLib's parser does not take is Damaged.
Result<std::optional<std::string>> withoutBookmarks(const std::string& text,
                                                    const std::function<bool(const std::string& uri)>& goes);

} // namespace veilkeep
