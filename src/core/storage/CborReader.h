#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veilkeep {

// One head of a CBOR document (RFC 8949) with the bytes of a text or byte string. What a stored file never
// holds (indefinite lengths, tags, undefined) and what cannot be read (the end, a cut) are Unreadable.
struct CborItem {
    enum class Kind { Unreadable, Unsigned, Negative, Bytes, Text, List, Map, Boolean, Null, Real };

    Kind kind = Kind::Unreadable;
    std::uint64_t number =
        0;                 // Unsigned; Negative is -1 - number; List, Map: entries announced; Boolean: 0, 1
    std::string_view text; // Bytes and Text, lies in the document
    double real = 0;
};

// Reads a document head by head without copying; it must outlive the reader and the items.
class CborReader {
public:
    explicit CborReader(std::string_view document) : m_rest(document) {}

    CborItem next();
    bool skip(std::string_view items) { // true when exactly these bytes came next
        if (!m_rest.starts_with(items))
            return false;
        m_rest.remove_prefix(items.size());
        return true;
    }
    std::size_t remaining() const { return m_rest.size(); }

private:
    std::string_view m_rest;
};

} // namespace veilkeep
