#pragma once

#include <algorithm>
#include <string_view>

namespace veilkeep {

// The text up to the first separator, or all of it; what is left of the text begins behind that.
inline std::string_view takeUntil(char separator, std::string_view& text) {
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(taken.size() + 1, text.size()));
    return taken;
}

} // namespace veilkeep
