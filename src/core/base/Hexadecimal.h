#pragma once

#include <cstdint>
#include <string>

namespace veilkeep {

// All 16 digits.
inline std::string hexadecimal(std::uint64_t number) {
    std::string text(16, '0');
    for (std::size_t digit = text.size(); digit-- > 0; number >>= 4)
        text[digit] = "0123456789abcdef"[number & 15];
    return text;
}

} // namespace veilkeep
