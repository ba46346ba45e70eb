#include "core/tracking/AliasRecord.h"

#include <algorithm>
#include <limits>

#define XXH_INLINE_ALL // no library is loaded for one function
#include <xxhash.h>

namespace veilkeep {
namespace {

constexpr std::string_view magic = "VkAl";
constexpr std::uint8_t version = 1;
constexpr std::size_t versionOffset = magic.size() + 4;
constexpr std::size_t headerSize = versionOffset + 1;
constexpr std::size_t digestSize = 8;
constexpr std::uint8_t hasBirthTime = 1;
constexpr std::uint8_t hasHandle = 2;

std::string littleEndian(std::uint64_t number, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(number >> (8 * i) & 0xff);
    return bytes;
}

std::uint64_t fromLittleEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return number;
}

std::uint64_t digestOf(std::string_view bytes) {
    return XXH3_64bits(bytes.data(), bytes.size());
}

// Small numbers are small whatever their sign.
std::uint64_t zigzag(std::int64_t number) {
    return static_cast<std::uint64_t>(number) << 1 ^ static_cast<std::uint64_t>(number >> 63);
}

std::int64_t fromZigzag(std::uint64_t number) {
    return static_cast<std::int64_t>(number >> 1 ^ (~(number & 1) + 1));
}

class ContentWriter {
public:
    explicit ContentWriter(std::string& bytes) : m_bytes(bytes) {}

    void byte(std::uint8_t value) { m_bytes.push_back(static_cast<char>(value)); }

    // Seven bits a byte, least first; the highest bit says that more follow.
    void number(std::uint64_t value) {
        for (; value >= 0x80; value >>= 7)
            byte(static_cast<std::uint8_t>(value | 0x80));
        byte(static_cast<std::uint8_t>(value));
    }
    void text(std::string_view value) {
        number(value.size());
        m_bytes.append(value);
    }
    void time(const FileTime& value) {
        number(zigzag(value.seconds));
        number(value.nanoseconds);
    }

private:
    std::string& m_bytes;
};

// Answers zeros and empty texts once anything was out of order; isGood() tells at the end.
class ContentReader {
public:
    explicit ContentReader(std::string_view bytes) : m_bytes(bytes) {}

    bool isGood() const { return m_good; }
    bool isAtEnd() const { return m_bytes.empty(); }
    void refuse() { m_good = false; }

    std::uint8_t byte() {
        const std::string_view taken = take(1);
        return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken.front());
    }
    std::uint64_t number() {
        std::uint64_t value = 0;
        for (unsigned int shift = 0; shift < 64; shift += 7) {
            const std::uint8_t next = byte();
            value |= std::uint64_t{next & 0x7fu} << shift;
            if (!(next & 0x80))
                return value;
        }
        refuse();
        return 0;
    }
    template <class Number>
    Number numberUpTo(Number most) {
        const std::uint64_t value = number();
        if (value > static_cast<std::uint64_t>(most))
            refuse();
        return m_good ? static_cast<Number>(value) : Number{};
    }
    std::string text() { return std::string(take(number())); }
    FileTime time() {
        const std::int64_t seconds = fromZigzag(number());
        return {seconds, numberUpTo<std::uint32_t>(999'999'999)};
    }

private:
    std::string_view take(std::uint64_t count) {
        if (!m_good || count > m_bytes.size()) {
            refuse();
            return {};
        }
        const std::string_view taken = m_bytes.substr(0, static_cast<std::size_t>(count));
        m_bytes.remove_prefix(taken.size());
        return taken;
    }

    std::string_view m_bytes;
    bool m_good = true;
};

void writeItem(ContentWriter& writer, const FileIdentity& item) {
    writer.byte(static_cast<std::uint8_t>(item.kind));
    writer.byte(
        static_cast<std::uint8_t>((item.birthTime ? hasBirthTime : 0) | (item.handle ? hasHandle : 0)));
    writer.number(item.inode);
    writer.number(item.size);
    writer.time(item.modificationTime);
    if (item.birthTime)
        writer.time(*item.birthTime);
    if (item.handle) {
        writer.number(zigzag(item.handle->type));
        writer.text(item.handle->bytes);
    }
}

FileHandle readHandle(ContentReader& reader) {
    const std::int64_t type = fromZigzag(reader.number());
    if (type < std::numeric_limits<std::int32_t>::min() || type > std::numeric_limits<std::int32_t>::max())
        reader.refuse();
    return {static_cast<std::int32_t>(type), reader.text()};
}

FileIdentity readItem(ContentReader& reader) {
    FileIdentity item;
    item.kind = ItemKind{reader.numberUpTo(static_cast<std::uint8_t>(ItemKind::BlockDevice))};
    const std::uint8_t flags = reader.numberUpTo<std::uint8_t>(hasBirthTime | hasHandle);
    item.inode = reader.number();
    item.size = reader.number();
    item.modificationTime = reader.time();
    if (flags & hasBirthTime)
        item.birthTime = reader.time();
    if (flags & hasHandle)
        item.handle = readHandle(reader);
    return item;
}

// The two paths mostly end alike: what the last path shares with the end of the other is written once.
void writePaths(ContentWriter& writer, const std::string& volumePath, std::string_view lastPath) {
    const auto [differing, _] =
        std::mismatch(volumePath.rbegin(), volumePath.rend(), lastPath.rbegin(), lastPath.rend());
    const auto shared = static_cast<std::size_t>(differing - volumePath.rbegin());
    writer.text(volumePath);
    writer.number(shared);
    writer.text(lastPath.substr(0, lastPath.size() - shared));
}

void readPaths(ContentReader& reader, AliasRecord& record) {
    record.volumePath = reader.text();
    const std::size_t shared = reader.numberUpTo(record.volumePath.size());
    record.lastPath = reader.text();
    record.lastPath.append(record.volumePath, record.volumePath.size() - shared);
}

// Its own count of bytes, where there are enough to hold one.
std::optional<std::uint64_t> sizeIn(std::string_view bytes) {
    if (bytes.size() < versionOffset)
        return std::nullopt;
    return fromLittleEndian(bytes.substr(magic.size(), versionOffset - magic.size()));
}

// What lies between header and digest, after all three were found in order.
std::optional<std::string_view> contentOf(std::string_view bytes) {
    if (bytes.size() < headerSize + digestSize || !bytes.starts_with(magic))
        return std::nullopt;
    const std::uint64_t size = sizeIn(bytes).value_or(0);
    if (size < headerSize + digestSize || size > bytes.size())
        return std::nullopt;
    const std::string_view covered = bytes.substr(0, static_cast<std::size_t>(size) - digestSize);
    if (digestOf(covered) != fromLittleEndian(bytes.substr(covered.size(), digestSize)) ||
        static_cast<std::uint8_t>(covered[versionOffset]) != version)
        return std::nullopt;
    return covered.substr(headerSize);
}

} // namespace

std::string encodeAliasRecord(const AliasRecord& record) {
    std::string bytes(magic);
    bytes.append(4, '\0');
    ContentWriter writer(bytes);
    writer.byte(version);
    writeItem(writer, record.item);
    writer.text(record.volume.uuid);
    writer.text(record.volume.fileSystemType);
    writer.text(record.volume.source);
    writePaths(writer, record.volumePath, record.lastPath);
    const std::size_t size = bytes.size() + digestSize;
    if (size > std::numeric_limits<std::uint32_t>::max())
        return {};
    bytes.replace(magic.size(), 4, littleEndian(size, 4));
    return bytes + littleEndian(digestOf(bytes), digestSize);
}

std::optional<AliasRecord> decodeAliasRecord(std::string_view bytes) {
    const auto content = contentOf(bytes);
    if (!content)
        return std::nullopt;
    ContentReader reader(*content);
    AliasRecord record;
    record.item = readItem(reader);
    record.volume.uuid = reader.text();
    record.volume.fileSystemType = reader.text();
    record.volume.source = reader.text();
    readPaths(reader, record);
    if (!reader.isGood() || !reader.isAtEnd() || record.lastPath.empty())
        return std::nullopt;
    return record;
}

bool isCutAliasRecord(std::string_view bytes) {
    return bytes.starts_with(magic) && sizeIn(bytes).value_or(headerSize) > bytes.size();
}

} // namespace veilkeep
