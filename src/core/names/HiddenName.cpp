#include "core/names/HiddenName.h"

#include "core/base/PathText.h"
#include "core/base/Utf8.h"

#include <algorithm>

namespace veilkeep {
namespace {

constexpr char32_t firstHighSurrogate = 0xD800, firstLowSurrogate = 0xDC00;
constexpr char32_t firstPairedCharacter = 0x10000;

char byteOf(char32_t lead, char32_t bits) {
    return static_cast<char>(lead | bits);
}

char tail(char32_t bits) {
    return byteOf(0x80, bits & 0x3F);
}

// The surrogate that the text begins with in its three-byte form; 0 where it begins with none.
char32_t firstSurrogate(std::string_view text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    if (text.size() < 3 || byteAt(0) != 0xED || byteAt(1) < 0xA0 || byteAt(1) > 0xBF ||
        (byteAt(2) & 0xC0) != 0x80)
        return 0;
    return 0xD000u | (byteAt(1) & 0x3Fu) << 6 | (byteAt(2) & 0x3Fu);
}

// Grows from its end to its front, so that what is put in comes out reversed.
class ReversedText {
public:
    explicit ReversedText(std::size_t originalSize)
        : m_text(originalSize + originalSize / 2, '\0'), m_front(m_text.size()) {}

    void prependByte(char byte) {
        m_lowInFront = 0;
        m_text[--m_front] = byte;
    }

    void prependCharacter(std::string_view bytes) {
        m_lowInFront = 0;
        prependBytes(bytes);
    }

    // Joins with the low surrogate behind it, where there is one.
    void prependHighSurrogate(char32_t high) {
        if (m_lowInFront == 0)
            return prependLone(high);
        const char32_t codePoint =
            firstPairedCharacter + ((high - firstHighSurrogate) << 10) + (m_lowInFront - firstLowSurrogate);
        const char bytes[] = {byteOf(0xF0, codePoint >> 18), tail(codePoint >> 12), tail(codePoint >> 6),
                              tail(codePoint)};
        m_front += 3;
        prependCharacter({bytes, sizeof bytes});
    }

    void prependLowSurrogate(char32_t low) {
        prependLone(low);
        m_lowInFront = low;
    }

    std::string take(std::string_view ending) && {
        m_text.erase(0, m_front);
        m_text.append(ending);
        return std::move(m_text);
    }

private:
    void prependBytes(std::string_view bytes) {
        m_front -= bytes.size();
        bytes.copy(m_text.data() + m_front, bytes.size());
    }

    void prependLone(char32_t surrogate) {
        const char bytes[] = {byteOf(0xE0, surrogate >> 12), tail(surrogate >> 6), tail(surrogate)};
        prependCharacter({bytes, sizeof bytes});
    }

    std::string m_text;
    std::size_t m_front;
    char32_t m_lowInFront = 0; // the lone low surrogate that the text begins with
};

// Takes the first character, or byte that is none, over from the text; answers its length.
std::size_t prependFirst(ReversedText& reversed, std::string_view text) {
    const Utf8Character character = firstUtf8Character(text);
    if (character.valid && character.codePoint >= firstPairedCharacter) {
        const char32_t offset = character.codePoint - firstPairedCharacter;
        reversed.prependHighSurrogate(firstHighSurrogate + (offset >> 10));
        reversed.prependLowSurrogate(firstLowSurrogate + (offset & 0x3FF));
        return character.length;
    }
    if (character.valid) {
        reversed.prependCharacter(text.substr(0, character.length));
        return character.length;
    }
    const char32_t surrogate = firstSurrogate(text);
    if (surrogate == 0) {
        reversed.prependByte(text.front());
        return 1;
    }
    if (surrogate < firstLowSurrogate)
        reversed.prependHighSurrogate(surrogate);
    else
        reversed.prependLowSurrogate(surrogate);
    return 3;
}

std::size_t baseLength(std::string_view name) {
    const auto dot = name.rfind('.');
    const bool whole = dot == std::string_view::npos || name.front() == '.' || name.back() == '.' ||
                       name.find("..") != std::string_view::npos;
    return whole ? name.size() : dot;
}

bool isNoFileName(std::string_view name) {
    return name.empty() || name == "." || name == ".." ||
           name.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos;
}

} // namespace

std::string scrambledName(std::string_view name) {
    const std::size_t length = baseLength(name);
    std::string_view base = name.substr(0, length);
    ReversedText reversed(base.size());
    while (!base.empty()) {
        std::size_t taken = 1;
        if (static_cast<unsigned char>(base.front()) < 0x80)
            reversed.prependByte(base.front());
        else
            taken = prependFirst(reversed, base);
        base.remove_prefix(taken);
    }
    return std::move(reversed).take(name.substr(length));
}

NameRefusal refusalToHide(std::string_view name, std::size_t longestName) {
    if (isNoFileName(name))
        return NameRefusal::NoFileName;
    const std::string hidden = scrambledName(name);
    if (hidden == hiddenDirectoryName || name == hiddenDirectoryName)
        return NameRefusal::IsHiddenDirectory;
    if (std::max(name.size(), hidden.size()) > std::min(longestName, longestFileName))
        return NameRefusal::TooLong;
    return scrambledName(hidden) == name ? NameRefusal::None : NameRefusal::NotItsOwnInverse;
}

std::string_view withoutHiddenDirectories(std::string_view path) {
    while (lastPathComponent(path) == hiddenDirectoryName)
        path = parentPath(path);
    return path;
}

std::string visibleName(std::string_view hiddenName) {
    std::string name = scrambledName(hiddenName);
    if (isNoFileName(name) || name == hiddenDirectoryName || name.size() > longestFileName)
        return std::string(hiddenName);
    return name;
}

} // namespace veilkeep
