#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veilkeep {

// Appends CBOR items (RFC 8949) to a string that must outlive the writer.
class CborWriter {
public:
    explicit CborWriter(std::string& output) : m_output(output) {}

    void unsignedNumber(std::uint64_t number);
    void integer(std::int64_t number);
    void bytes(std::string_view bytes);
    void text(std::string_view text); // as a byte string where it is not well-formed UTF-8
    void list(std::size_t count);     // that many items follow
    void map(std::size_t count);      // that many pairs follow
    void boolean(bool flag);
    void null();
    void real(double number);
    void raw(std::string_view items) { m_output.append(items); } // items that are CBOR already

private:
    std::string& m_output;
};

} // namespace veilkeep
