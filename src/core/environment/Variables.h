#pragma once

#include <cstdlib>
#include <string_view>

namespace veilkeep {

inline bool variableIs(const char* name, std::string_view value) {
    const char* const set = std::getenv(name);
    return set && set == value;
}

// To anything but nothing.
inline bool variableIsSet(const char* name) {
    const char* const set = std::getenv(name);
    return set && *set;
}

} // namespace veilkeep
