#include "filelist/NamePattern.h"

#include "core/base/Utf8.h"

#include <QChar>
#include <QList>

#include <array>
#include <cstddef>
#include <span>

namespace veilkeep {
namespace {

constexpr char32_t anyCharacter = 0x110000; // beyond Unicode, as are the bytes that are no text
constexpr char32_t firstLonelyByte = anyCharacter + 1;

constexpr std::array<char32_t, 0x80> foldedAscii = [] {
    std::array<char32_t, 0x80> folded{};
    for (char32_t character = 0; character < folded.size(); ++character)
        folded[character] = character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character;
    return folded;
}();

struct FoldedCharacter {
    char32_t value;
    std::size_t length; // bytes
};

FoldedCharacter firstBeyondAscii(std::string_view text) {
    const Utf8Character first = firstUtf8Character(text);
    return {first.valid ? QChar::toCaseFolded(first.codePoint) : firstLonelyByte + first.codePoint,
            first.length};
}

inline FoldedCharacter firstOf(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.front());
    return byte < foldedAscii.size() ? FoldedCharacter{foldedAscii[byte], 1} : firstBeyondAscii(text);
}

// How many bytes at the front of the text the piece takes; none where it does not begin there.
std::size_t lengthAtFront(std::span<const char32_t> piece, std::string_view text) {
    std::size_t length = 0;
    for (const char32_t wanted : piece) {
        if (length == text.size())
            return 0;
        const FoldedCharacter character = firstOf(text.substr(length));
        if (wanted != character.value && wanted != anyCharacter)
            return 0;
        length += character.length;
    }
    return length;
}

// Takes from the front of the text all that lies before the piece's first place, and the piece itself.
bool removeThrough(std::span<const char32_t> piece, std::string_view& text) {
    for (; !text.empty(); text.remove_prefix(firstOf(text).length))
        if (const std::size_t length = lengthAtFront(piece, text)) {
            text.remove_prefix(length);
            return true;
        }
    return false;
}

} // namespace

NamePattern::NamePattern(const QString& search) {
    Piece piece;
    const auto endPiece = [&] {
        if (!piece.empty())
            m_pieces.push_back(std::move(piece));
        piece = {};
    };
    for (const char32_t character : search.toUcs4())
        if (character == U'*')
            endPiece();
        else
            piece.push_back(character == U'?' ? anyCharacter : QChar::toCaseFolded(character));
    endPiece();
}

// The pattern begins and ends with "*", so that the first place of each piece is as good as any later one.
bool NamePattern::isIn(std::string_view name) const {
    for (const Piece& piece : m_pieces)
        if (!removeThrough(piece, name))
            return false;
    return true;
}

} // namespace veilkeep
