#pragma once

#include "core/base/Result.h"

#include <string>
#include <string_view>

namespace veilkeep {

// The XXH3-128 digest of a file's content in hexadecimal digits, to tell whether somebody changed it. Links
// are followed.
Result<std::string> fileDigest(const std::string& path);
std::string digestOf(std::string_view bytes);

} // namespace veilkeep
