#include "core/base/Utf8.h"

namespace veilkeep {
namespace {

struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest; // code points below it must be written shorter
};

Lead leadOf(unsigned char byte) {
    if (byte < 0x80)
        return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0)
        return {2, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0)
        return {3, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5)
        return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

} // namespace

Utf8Character firstUtf8Character(std::string_view text) {
    if (text.empty())
        return {};
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const Utf8Character lonelyByte{byteAt(0), 1, false};
    const Lead lead = leadOf(byteAt(0));
    if (lead.length == 0 || lead.length > text.size())
        return lonelyByte;
    char32_t codePoint = lead.bits;
    for (std::size_t index = 1; index < lead.length; ++index) {
        if ((byteAt(index) & 0xC0u) != 0x80)
            return lonelyByte;
        codePoint = codePoint << 6 | (byteAt(index) & 0x3Fu);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < lead.smallest || codePoint > 0x10FFFF || surrogate)
        return lonelyByte;
    return {codePoint, lead.length, true};
}

bool isWellFormedUtf8(std::string_view text) {
    while (!text.empty()) {
        const Utf8Character character = firstUtf8Character(text);
        if (!character.valid)
            return false;
        text.remove_prefix(character.length);
    }
    return true;
}

} // namespace veilkeep
