#include "core/storage/CborWriter.h"

#include "core/base/Utf8.h"

#include <cbor.h>

namespace veilkeep {
namespace {

constexpr std::size_t longestHead = 9;

template <class Encoder, class... Arguments>
void appendHead(std::string& output, Encoder encode, Arguments... arguments) {
    unsigned char head[longestHead];
    const std::size_t length = encode(arguments..., head, sizeof head);
    output.append(reinterpret_cast<const char*>(head), length);
}

} // namespace

void CborWriter::unsignedNumber(std::uint64_t number) {
    appendHead(m_output, cbor_encode_uint, number);
}

void CborWriter::integer(std::int64_t number) {
    if (number < 0)
        appendHead(m_output, cbor_encode_negint, ~static_cast<std::uint64_t>(number)); // stands for -1 - it
    else
        appendHead(m_output, cbor_encode_uint, static_cast<std::uint64_t>(number));
}

void CborWriter::bytes(std::string_view bytes) {
    appendHead(m_output, cbor_encode_bytestring_start, bytes.size());
    m_output.append(bytes);
}

void CborWriter::text(std::string_view text) {
    if (!isWellFormedUtf8(text))
        return bytes(text);
    appendHead(m_output, cbor_encode_string_start, text.size());
    m_output.append(text);
}

void CborWriter::list(std::size_t count) {
    appendHead(m_output, cbor_encode_array_start, count);
}

void CborWriter::map(std::size_t count) {
    appendHead(m_output, cbor_encode_map_start, count);
}

void CborWriter::boolean(bool flag) {
    appendHead(m_output, cbor_encode_bool, flag);
}

void CborWriter::null() {
    appendHead(m_output, cbor_encode_null);
}

void CborWriter::real(double number) {
    appendHead(m_output, cbor_encode_double, number);
}

} // namespace veilkeep
