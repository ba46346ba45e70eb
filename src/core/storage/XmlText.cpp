#include "core/storage/XmlText.h"

#include "core/base/Utf8.h"

namespace veilkeep {

bool isXmlCharacter(char32_t codePoint) {
    if (codePoint < 0x20)
        return codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return !surrogate && codePoint != 0xFFFE && codePoint != 0xFFFF && codePoint <= 0x10FFFF;
}

bool fitsXmlText(std::string_view text) {
    while (!text.empty()) {
        const Utf8Character character = firstUtf8Character(text);
        if (!character.valid || !isXmlCharacter(character.codePoint) || character.codePoint == '\r')
            return false;
        text.remove_prefix(character.length);
    }
    return true;
}

void appendXmlText(std::string& document, std::string_view text) {
    for (const char character : text) {
        switch (character) {
        case '&':
            document += "&amp;";
            break;
        case '<':
            document += "&lt;";
            break;
        case '>':
            document += "&gt;";
            break;
        default:
            document += character;
        }
    }
}

} // namespace veilkeep
