#pragma once

#include <cstddef>
#include <string_view>

namespace veilkeep {

// One character at the front of a text: a Unicode scalar value in well-formed UTF-8 (RFC 3629), or where
// there is none, one byte that belongs to no character.
struct Utf8Character {
    char32_t codePoint = 0; // the byte itself where valid is false
    std::size_t length = 0; // bytes, 0 at the end of the text
    bool valid = false;
};

Utf8Character firstUtf8Character(std::string_view text);

bool isWellFormedUtf8(std::string_view text);

} // namespace veilkeep
