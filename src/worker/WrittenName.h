#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// One component of a path as it may be written in the files of other programs: with any bytes as "%XX",
// within XML or a desktop file. Answers whether it may be there; a "no" is certain.
class WrittenName {
public:
    explicit WrittenName(std::string name);

    // In a regular file; false where there is none, true where it is too long for a short look.
    bool mayBeInUrisOf(const std::string& file) const;

    // Unescaped behind a "/".
    bool mayBeInTextOf(const std::string& file) const;

private:
    bool mayBeAt(std::string_view text, std::size_t anchorPlace) const;
    bool mayBeIn(std::string_view text) const;

    std::string m_name;
    std::string m_anchor; // the longest part of the name that nobody escapes
    std::size_t m_anchorBegin = 0;
    std::vector<std::string> m_spellings; // instead of an anchor, where the name has none
};

} // namespace veilkeep
