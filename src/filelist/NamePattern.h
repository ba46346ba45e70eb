#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace veilkeep {

// What a name is searched for: anywhere in it, case ignored (Unicode simple case folding), "*" for any run
// and "?" for any one character. A byte of the name that is no text is a character of its own and equals
// none that can be typed. Any thread.
class NamePattern {
public:
    explicit NamePattern(const QString& search);

    // In time of at most the name's length times the pattern's, whatever they are.
    bool isIn(std::string_view name) const;

private:
    using Piece = std::vector<char32_t>; // folded characters between two "*"

    std::vector<Piece> m_pieces; // none is empty
};

} // namespace veilkeep
