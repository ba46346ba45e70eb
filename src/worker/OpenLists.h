#pragma once

#include <string>
#include <vector>

namespace veilkeep {

// The programs, by the names that their users know, that have the item or something below it in their own
// list of recent files, are running for this user, and write that list back when they are closed. What cannot
// be read counts as holding nothing.
std::vector<std::string> runningProgramsThatRemember(const std::string& path);

} // namespace veilkeep
