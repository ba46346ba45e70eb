#pragma once

#include <string>
#include <vector>

namespace veilkeep {

// The home directory that the system's user database gives for a user; empty where the user has no entry or
// an entry without an absolute path.
std::string homeInUserDatabase(unsigned int uid);

// The home directories of all users in the local file, absolute ones only. Users that the name services alone
// know are left out: there may be any number of them.
std::vector<std::string> homesInLocalFile();

} // namespace veilkeep
