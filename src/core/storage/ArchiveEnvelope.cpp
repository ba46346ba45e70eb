#include "core/storage/ArchiveEnvelope.h"

#include "core/storage/CborReader.h"
#include "core/storage/CborWriter.h"

#include <sys/mman.h>
#include <xxhash.h>

#include <cstdint>

namespace veilkeep {
namespace {

using Kind = CborItem::Kind;

constexpr std::string_view magic = "Veilkeep";
constexpr std::size_t partCount = 4;
constexpr std::size_t longHeadSize = 9; // of a byte string whose length takes eight bytes
constexpr std::size_t roomAround = 64;  // more than magic, version, heads and digest take

std::string digestOf(std::string_view payload, std::uint64_t version) {
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_withSeed(payload.data(), payload.size(), version));
    return {reinterpret_cast<const char*>(canonical.digest), sizeof canonical.digest};
}

// A long list fills tens of megabytes, which the system hands out several times faster in huge pages. Advice
// only: where it is not taken nothing is lost but the time.
void adviseHugePages(const std::string& text) {
    constexpr std::uintptr_t hugePage = 2u << 20;
    const auto first = reinterpret_cast<std::uintptr_t>(text.data());
    const std::uintptr_t begin = (first + hugePage - 1) & ~(hugePage - 1);
    const std::uintptr_t end = (first + text.capacity()) & ~(hugePage - 1);
    if (begin < end)
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

} // namespace

Result<ArchiveEnvelope> openArchiveEnvelope(std::string_view bytes) {
    CborReader reader(bytes);
    const CborItem envelope = reader.next();
    if (envelope.kind != Kind::List || envelope.number != partCount)
        return Error::damaged("open archive");
    const CborItem name = reader.next();
    const CborItem version = reader.next();
    const CborItem payload = reader.next();
    const CborItem digest = reader.next();
    const bool whole = name.kind == Kind::Text && name.text == magic && version.kind == Kind::Unsigned &&
                       version.number > 0 && payload.kind == Kind::Bytes && digest.kind == Kind::Bytes &&
                       reader.remaining() == 0;
    if (!whole || digest.text != digestOf(payload.text, version.number))
        return Error::damaged("open archive");
    return ArchiveEnvelope{version.number, payload.text};
}

ArchiveEnvelopeWriter::ArchiveEnvelopeWriter(std::uint64_t version, std::size_t expectedPayloadSize)
    : m_version(version) {
    m_text.reserve(expectedPayloadSize + roomAround);
    adviseHugePages(m_text);
    CborWriter writer(m_text);
    writer.list(partCount);
    writer.text(magic);
    writer.unsignedNumber(version);
    m_text.append(longHeadSize, '\0'); // the payload's head, filled in once its length is known
    m_payloadBegin = m_text.size();
}

std::string ArchiveEnvelopeWriter::seal() && {
    const std::string_view payload = std::string_view(m_text).substr(m_payloadBegin);
    const std::string digest = digestOf(payload, m_version);
    constexpr char byteStringOfLongLength = '\x5B';
    std::size_t head = m_payloadBegin - longHeadSize;
    m_text[head++] = byteStringOfLongLength;
    for (int shift = 56; shift >= 0; shift -= 8)
        m_text[head++] = static_cast<char>(payload.size() >> shift & 0xFFu);
    CborWriter(m_text).bytes(digest);
    return std::move(m_text);
}

} // namespace veilkeep
