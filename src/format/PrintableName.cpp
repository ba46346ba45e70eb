#include "format/PrintableName.h"

#include "core/base/Utf8.h"

#include <cstdio>

namespace veilkeep {
namespace {

bool isMisleading(char32_t codePoint) {
    const auto within = [codePoint](char32_t first, char32_t last) {
        return codePoint >= first && codePoint <= last;
    };
    return within(0x00, 0x1F) || within(0x7F, 0x9F) ||         // control characters
           codePoint == 0x061C || within(0x200B, 0x200F) ||    // direction marks, zero-width characters
           within(0x2028, 0x202E) || within(0x2060, 0x206F) || // line breaks, direction changes
           codePoint == 0xFEFF || within(0xFFF9, 0xFFFB) ||    // byte order mark, annotations
           within(0xE0000, 0xE007F);                           // tags
}

std::string escaped(const Utf8Character& character) {
    switch (character.codePoint) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    char text[16];
    const bool asByte = !character.valid || character.codePoint < 0x80;
    std::snprintf(text, sizeof text, asByte ? "\\x%02x" : "\\u%04x",
                  static_cast<unsigned int>(character.codePoint));
    return text;
}

} // namespace

std::string printableName(std::string_view name) {
    std::string printable;
    while (!name.empty()) {
        const Utf8Character character = firstUtf8Character(name);
        if (!character.valid || isMisleading(character.codePoint))
            printable += escaped(character);
        else if (character.codePoint == '\\')
            printable += "\\\\";
        else
            printable += name.substr(0, character.length);
        name.remove_prefix(character.length);
    }
    return printable;
}

std::string quotedName(std::string_view name) {
    return "'" + printableName(name) + "'";
}

} // namespace veilkeep
