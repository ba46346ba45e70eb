#pragma once

#include <string>
#include <string_view>

namespace veilkeep {

// The MD5 digest (RFC 1321) in 32 lower-case hexadecimal digits. For names and stored digests that are
// defined by it; it protects nothing.
std::string md5(std::string_view bytes);

} // namespace veilkeep
