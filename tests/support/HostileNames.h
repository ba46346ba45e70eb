#pragma once

#include <string>
#include <vector>

namespace veilkeep::test {

// File names, each once and each legal for the system (1 to 255 bytes, no "/" and no NUL), chosen to break
// what handles names carelessly: more than 600 of them.
std::vector<std::string> hostileNames();

} // namespace veilkeep::test
