#pragma once

#include <cstring>
#include <span>

namespace veilkeep {

// Overwrites the arguments that this process was started with: other users see them for as long as it runs.
inline void wipeArguments(std::span<char* const> arguments) {
    for (char* const argument : arguments)
        std::memset(argument, 0, std::strlen(argument));
}

} // namespace veilkeep
