#pragma once

#include "core/base/Result.h"

#include <string>
#include <string_view>

namespace veilkeep {

// The absolute path of an item that the user named, in the user's spelling as far as it names the item by its
// own name: "." and "dir/.." become the directory that they stand for. As root the links on the way to the
// item are resolved here, since the worker follows none; the item itself is never followed.
Result<std::string> absoluteItemPath(std::string_view argument);

} // namespace veilkeep
