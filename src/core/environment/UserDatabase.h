#pragma once

#include <string>

namespace veilkeep {

// The home directory that the system's user database gives for a user; empty where the user has no entry or
// an entry without an absolute path.
std::string homeInUserDatabase(unsigned int uid);

} // namespace veilkeep
