#include "worker/WrittenName.h"

#include "core/base/FileUri.h"
#include "core/base/Hexadecimal.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace veilkeep {
namespace {

constexpr off_t longestFileLookedThrough = off_t{16} << 20;
constexpr std::size_t pieceSize = std::size_t{64} << 10;
constexpr std::size_t overlap = 4096; // more than a name takes, however it is escaped

bool nobodyEscapes(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           byte == '-' || byte == '.' || byte == '_';
}

// Begin and length.
std::pair<std::size_t, std::size_t> longestUnescapedPart(std::string_view name) {
    std::pair<std::size_t, std::size_t> longest = {0, 0};
    for (std::size_t begin = 0; begin < name.size();) {
        const auto end =
            std::find_if_not(name.begin() + static_cast<std::ptrdiff_t>(begin), name.end(), nobodyEscapes);
        const std::size_t length = static_cast<std::size_t>(end - name.begin()) - begin;
        if (length > longest.second)
            longest = {begin, length};
        begin += length + 1;
    }
    return longest;
}

std::size_t placeOf(std::string_view text, std::string_view part, std::size_t from) {
    if (from > text.size())
        return std::string_view::npos;
    const void* found = ::memmem(text.data() + from, text.size() - from, part.data(), part.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
                 : std::string_view::npos;
}

// Each piece comes with the end of the one before it. Changes made meanwhile are read as they come.
template <class Look>
bool anyPieceOf(const std::string& path, Look look) {
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    if (status.st_size > longestFileLookedThrough)
        return true;
    static char buffer[overlap + pieceSize];
    std::size_t kept = 0;
    for (;;) {
        const ssize_t count = retryOnInterrupt([&] { return ::read(file.get(), buffer + kept, pieceSize); });
        if (count <= 0)
            return false; // what cannot be read cannot be cleaned either
        const std::size_t length = kept + static_cast<std::size_t>(count);
        if (look(std::string_view(buffer, length)))
            return true;
        kept = std::min(length, overlap);
        std::memmove(buffer, buffer + length - kept, kept);
    }
}

// What a name can be written as beside the escapes of URIs: entities of XML, escapes of desktop files.
bool mayBeOtherEscape(char byte) {
    return byte == '&' || byte == ';' || byte == '\\' || byte == '$';
}

bool isEscapeOf(std::string_view three, char byte) {
    return three.size() == 3 && three[0] == '%' &&
           hexadecimalValue(three[1]) * 16 + hexadecimalValue(three[2]) == static_cast<unsigned char>(byte);
}

std::string lowerCase(std::string text) {
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte | 0x20);
    return text;
}

bool endsAName(char byte) {
    constexpr std::string_view ends = "/\"'\n\r?#<>&=$";
    return ends.find(byte) != std::string_view::npos;
}

} // namespace

WrittenName::WrittenName(std::string name) : m_name(std::move(name)) {
    const auto [begin, length] = longestUnescapedPart(m_name);
    m_anchorBegin = begin;
    m_anchor = m_name.substr(begin, length);
    if (!m_anchor.empty())
        return;
    const std::string encoded = percentEncoded(m_name, UriSpelling::GLib);
    m_spellings = {m_name, encoded, lowerCase(encoded)};
}

bool WrittenName::mayBeInUrisOf(const std::string& file) const {
    return anyPieceOf(file, [this](std::string_view text) { return mayBeIn(text); });
}

bool WrittenName::mayBeInTextOf(const std::string& file) const {
    const std::string behindSlash = "/" + m_name;
    return anyPieceOf(
        file, [&](std::string_view text) { return placeOf(text, behindSlash, 0) != std::string_view::npos; });
}

bool WrittenName::mayBeIn(std::string_view text) const {
    constexpr std::string_view escapedInManyWays = "&'$;\\<>\"%#?";
    if (m_anchor.empty() && m_name.find_first_of(escapedInManyWays) != std::string::npos)
        return true;
    if (m_anchor.empty())
        return std::ranges::any_of(m_spellings, [&](const std::string& spelling) {
            return placeOf(text, spelling, 0) != std::string_view::npos;
        });
    for (std::size_t place = placeOf(text, m_anchor, 0); place != std::string_view::npos;
         place = placeOf(text, m_anchor, place + 1))
        if (mayBeAt(text, place))
            return true;
    return false;
}

bool WrittenName::mayBeAt(std::string_view text, std::size_t anchorPlace) const {
    std::string_view before = text.substr(0, anchorPlace);
    for (std::size_t index = m_anchorBegin; index-- > 0;) {
        if (before.empty())
            return false; // the piece before this one held all of it
        if (mayBeOtherEscape(before.back()))
            return true;
        if (before.size() >= 3 && isEscapeOf(before.substr(before.size() - 3), m_name[index]))
            before.remove_suffix(3);
        else if (before.back() == m_name[index])
            before.remove_suffix(1);
        else
            return false;
    }
    std::string_view after = text.substr(anchorPlace + m_anchor.size());
    for (const char byte : std::string_view(m_name).substr(m_anchorBegin + m_anchor.size())) {
        if (after.empty())
            return false; // the next piece holds all of it
        if (mayBeOtherEscape(after.front()))
            return true;
        if (isEscapeOf(after.substr(0, 3), byte))
            after.remove_prefix(3);
        else if (after.front() == byte)
            after.remove_prefix(1);
        else
            return false;
    }
    return (before.empty() || endsAName(before.back())) && (after.empty() || endsAName(after.front()));
}

} // namespace veilkeep
