#pragma once

#include <string>

namespace veilkeep {

// Where the user's message bus listens; empty where there is none.
std::string sessionBusAddress();

} // namespace veilkeep
