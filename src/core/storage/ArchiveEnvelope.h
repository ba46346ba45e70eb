#pragma once

#include "core/base/Result.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veilkeep {

// What lies around the payload of a data file, the same in every version of the format: a CBOR array of the
// text "Veilkeep", the format version (from 1), the payload as a byte string, and its XXH3-128 digest in
// canonical form. The version is the digest's seed, so that a change of either is noticed.
struct ArchiveEnvelope {
    std::uint64_t version = 0;
    std::string_view payload; // lies in the bytes that were opened
};

// What stands before the properties of each record in a payload: a map of one pair and the pair's key.
inline constexpr std::string_view recordHead = "\xA1\x6Aproperties";

// Damaged when anything but one whole envelope is there.
Result<ArchiveEnvelope> openArchiveEnvelope(std::string_view bytes);

// Writes an envelope around a payload that is appended in place: begin, append to text(), seal.
class ArchiveEnvelopeWriter {
public:
    ArchiveEnvelopeWriter(std::uint64_t version, std::size_t expectedPayloadSize);

    std::string& text() { return m_text; }
    std::string seal() &&;

private:
    std::uint64_t m_version;
    std::string m_text;
    std::size_t m_payloadBegin = 0;
};

} // namespace veilkeep
