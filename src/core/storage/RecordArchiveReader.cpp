#include "core/base/Utf8.h"
#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/CborReader.h"
#include "core/storage/CborWriter.h"
#include "core/storage/RecordArchive.h"

#include <limits>
#include <memory>
#include <optional>
#include <unordered_set>

namespace veilkeep {
namespace {

using Kind = CborItem::Kind;
using Entry = PropertyDictionary::Entry;

constexpr std::size_t leastEntrySize = 2;

// Reads keys. Records hold the same keys in the same order, so the bytes of the key that was last at the same
// place are tried first.
class KeyReader {
public:
    std::optional<PropertyKey> read(CborReader& input, std::size_t place) {
        if (place < m_last.size() && input.skip(m_last[place].encoded))
            return m_last[place].key;
        const CborItem item = input.next();
        const bool text = item.kind == Kind::Text && isWellFormedUtf8(item.text);
        if (!text && item.kind != Kind::Bytes)
            return std::nullopt;
        const PropertyKey key(item.text);
        m_seen.insert(&key.text());
        if (m_seen.size() > RecordArchive::maximumKeys)
            return std::nullopt;
        remember(key, place);
        return key;
    }

private:
    struct Last {
        PropertyKey key;
        std::string encoded;
    };
    static constexpr std::size_t placesRemembered = 64;

    void remember(const PropertyKey& key, std::size_t place) {
        if (place >= placesRemembered || place > m_last.size())
            return;
        if (place == m_last.size())
            m_last.push_back({key, {}});
        m_last[place] = {key, {}};
        CborWriter(m_last[place].encoded).text(key.text());
    }

    std::vector<Last> m_last;
    std::unordered_set<const std::string*> m_seen;
};

// Reads one payload. Nothing is reserved for an announced count that the bytes left could not hold.
class PayloadReader {
public:
    PayloadReader(std::string_view payload, std::shared_ptr<const void> file)
        : m_input(payload), m_file(std::move(file)) {}

    std::optional<RecordArchive> read(std::string_view recordsKey);

private:
    bool readRecords(std::vector<PropertyDictionary>& records);
    bool readRecord(PropertyDictionary& record);
    bool readDictionary(PropertyDictionary& dictionary, std::uint64_t count, int depth);
    bool readValue(Value& value, int depth);
    bool readList(Value& value, std::uint64_t count, int depth);
    bool readNestedDictionary(Value& value, std::uint64_t count, int depth);
    bool takeNested(std::uint64_t count);

    CborReader m_input;
    std::shared_ptr<const void> m_file; // the block that the texts lie in
    KeyReader m_keys;
    std::size_t m_nestedLeft = RecordArchive::maximumNestedValues;
};

std::optional<RecordArchive> PayloadReader::read(std::string_view recordsKey) {
    RecordArchive archive;
    bool recordsSeen = false;
    const CborItem map = m_input.next();
    if (map.kind != Kind::Map || !takeNested(map.number))
        return std::nullopt;
    for (std::uint64_t index = 0; index < map.number; ++index) {
        const std::optional<PropertyKey> key = m_keys.read(m_input, 0);
        if (!key)
            return std::nullopt;
        if (key->text() == recordsKey) {
            if (recordsSeen || !readRecords(archive.records))
                return std::nullopt;
            recordsSeen = true;
        } else if (!readValue(archive.unknown.emplace_back(Entry{*key, {}}).value, 0))
            return std::nullopt;
    }
    if (!recordsSeen || m_input.remaining() > 0 || !keysAreUnique(archive.unknown))
        return std::nullopt;
    return archive;
}

bool PayloadReader::readRecords(std::vector<PropertyDictionary>& records) {
    const CborItem list = m_input.next();
    if (list.kind != Kind::List || list.number > m_input.remaining() / recordHead.size())
        return false;
    records.reserve(list.number);
    for (std::uint64_t index = 0; index < list.number; ++index)
        if (!readRecord(records.emplace_back()))
            return false;
    return true;
}

bool PayloadReader::readRecord(PropertyDictionary& record) {
    if (!m_input.skip(recordHead))
        return false;
    const CborItem properties = m_input.next();
    return properties.kind == Kind::Map && readDictionary(record, properties.number, 0);
}

bool PayloadReader::readDictionary(PropertyDictionary& dictionary, std::uint64_t count, int depth) {
    if (count > m_input.remaining() / leastEntrySize || count > RecordArchive::maximumKeys)
        return false;
    std::vector<Entry> entries;
    entries.reserve(count);
    for (std::uint64_t index = 0; index < count; ++index) {
        const std::optional<PropertyKey> key = m_keys.read(m_input, index);
        if (!key || !readValue(entries.emplace_back(Entry{*key, {}}).value, depth))
            return false;
    }
    std::optional<PropertyDictionary> read = PropertyDictionary::fromEntries(std::move(entries));
    if (read)
        dictionary = std::move(*read);
    return read.has_value();
}

bool PayloadReader::readValue(Value& value, int depth) {
    constexpr std::uint64_t greatestInteger = std::numeric_limits<std::int64_t>::max();
    const CborItem item = m_input.next();
    switch (item.kind) {
    case Kind::Unreadable:
        return false;
    case Kind::Unsigned:
        value = item.number > greatestInteger ? Value(item.number)
                                              : Value(static_cast<std::int64_t>(item.number));
        return true;
    case Kind::Negative:
        value = static_cast<std::int64_t>(~item.number);
        return item.number <= greatestInteger;
    case Kind::Bytes:
        value = Bytes{SharedText(m_file, item.text)};
        return true;
    case Kind::Text:
        value = SharedText(m_file, item.text);
        return isWellFormedUtf8(item.text);
    case Kind::List:
        return readList(value, item.number, depth + 1);
    case Kind::Map:
        return readNestedDictionary(value, item.number, depth + 1);
    case Kind::Boolean:
        value = item.number != 0;
        return true;
    case Kind::Null:
        value = Null();
        return true;
    case Kind::Real:
        value = item.real;
        return true;
    }
    return false;
}

bool PayloadReader::readList(Value& value, std::uint64_t count, int depth) {
    if (depth > maximumValueNesting || !takeNested(count))
        return false;
    ValueList list;
    list.reserve(count);
    for (std::uint64_t index = 0; index < count; ++index)
        if (!readValue(list.emplace_back(), depth))
            return false;
    value = std::move(list);
    return true;
}

bool PayloadReader::readNestedDictionary(Value& value, std::uint64_t count, int depth) {
    PropertyDictionary dictionary;
    if (depth > maximumValueNesting || !takeNested(count) || !readDictionary(dictionary, count, depth))
        return false;
    value = std::move(dictionary);
    return true;
}

bool PayloadReader::takeNested(std::uint64_t count) {
    if (count > m_input.remaining() || count > m_nestedLeft)
        return false;
    m_nestedLeft -= count;
    return true;
}

} // namespace

Result<RecordArchive> decodeArchive(std::string bytes, std::string_view recordsKey) {
    const auto file = std::make_shared<const std::string>(std::move(bytes));
    const Result<ArchiveEnvelope> envelope = openArchiveEnvelope(*file);
    if (!envelope)
        return envelope.error();
    std::optional<RecordArchive> archive = PayloadReader(envelope->payload, file).read(recordsKey);
    if (archive) {
        archive->version = envelope->version;
        return std::move(*archive);
    }
    if (envelope->version > RecordArchive::currentVersion)
        return Error{ErrorCode::NewerVersion, "decode archive", {}, 0};
    return Error::damaged("decode archive");
}

} // namespace veilkeep
