#pragma once

#include <string>

namespace veilkeep {

// Whether something is mounted on the path itself, a bind-mounted file included. A link at the path is not
// followed, and nothing gets mounted by asking. False where the path cannot be looked at.
bool isMountPoint(const std::string& path);

} // namespace veilkeep
