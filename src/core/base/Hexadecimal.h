#pragma once

#include <cstdint>
#include <string>

namespace veilkeep {

inline constexpr const char* hexadecimalDigits = "0123456789abcdef";

// All 16 digits.
inline std::string hexadecimal(std::uint64_t number) {
    std::string text(16, '0');
    for (std::size_t digit = text.size(); digit-- > 0; number >>= 4)
        text[digit] = hexadecimalDigits[number & 15];
    return text;
}

// Both digits.
inline std::string hexadecimalByte(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return {hexadecimalDigits[number >> 4], hexadecimalDigits[number & 15]};
}

// 0 to 15, -1 for what is no hexadecimal digit.
inline int hexadecimalValue(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace veilkeep
