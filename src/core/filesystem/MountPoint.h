#pragma once

#include <string>
#include <string_view>

namespace veilkeep {

// Whether something is mounted on the path itself, a bind-mounted file included. A link at the path is not
// followed, and nothing gets mounted by asking. False where the path cannot be looked at.
bool isMountPoint(const std::string& path);

// Whether a text in the form of /proc/self/mountinfo lists the path, which must be free of links.
bool listsMountPoint(std::string_view mountInfo, std::string_view path);

} // namespace veilkeep
