#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/CborWriter.h"
#include "core/storage/RecordArchive.h"

#include <algorithm>
#include <type_traits>
#include <unordered_map>

namespace veilkeep {
namespace {

using Entry = PropertyDictionary::Entry;

constexpr std::size_t longestHead = 9;

std::size_t sizeBound(const Entry& entry) {
    const std::optional<std::string_view> text = entry.value.asString();
    return 2 * longestHead + entry.key.text().size() + (text ? text->size() : 0);
}

// Enough for everything but nested values, which are rare and let the text grow.
std::size_t sizeBound(std::span<const PropertyDictionary* const> records, std::span<const Entry> unknown) {
    constexpr std::size_t aroundRecord = 32;
    std::size_t bound = aroundRecord;
    for (const PropertyDictionary* record : records) {
        bound += aroundRecord;
        for (const Entry& entry : *record)
            bound += sizeBound(entry);
    }
    for (const Entry& entry : unknown)
        bound += sizeBound(entry);
    return bound;
}

// Writes keys that it has made CBOR of once before. Records hold the same keys in the same order, so the key
// that was last at the same place is tried first.
class KeyWriter {
public:
    void write(CborWriter& output, const PropertyKey& key, std::size_t place) {
        if (place < m_last.size() && m_last[place]->first == &key.text())
            return output.raw(m_last[place]->second);
        const auto known = m_encoded.try_emplace(&key.text()).first;
        if (known->second.empty())
            CborWriter(known->second).text(key.text());
        if (place < m_last.size())
            m_last[place] = &*known;
        else if (place == m_last.size() && place < placesRemembered)
            m_last.push_back(&*known);
        output.raw(known->second);
    }
    std::size_t keyCount() const { return m_encoded.size(); }

private:
    using Encoded = std::unordered_map<const std::string*, std::string>;
    static constexpr std::size_t placesRemembered = 64;

    Encoded m_encoded;
    std::vector<const Encoded::value_type*> m_last;
};

class PayloadWriter {
public:
    explicit PayloadWriter(std::string& output) : m_output(output) {}

    void write(std::string_view recordsKey, std::span<const PropertyDictionary* const> records,
               std::span<const Entry> unknown);
    bool withinBounds() const {
        return m_greatestDepth <= maximumValueNesting &&
               m_nestedCount <= RecordArchive::maximumNestedValues &&
               m_keys.keyCount() <= RecordArchive::maximumKeys;
    }

private:
    void writeEntries(const PropertyDictionary& dictionary, int depth);
    void writeValue(const Value& value, int depth);
    bool enterNested(std::size_t count, int depth);

    CborWriter m_output;
    KeyWriter m_keys;
    std::size_t m_nestedCount = 0;
    int m_greatestDepth = 0;
};

void PayloadWriter::write(std::string_view recordsKey, std::span<const PropertyDictionary* const> records,
                          std::span<const Entry> unknown) {
    m_output.map(unknown.size() + 1);
    enterNested(unknown.size() + 1, 0);
    m_keys.write(m_output, recordsKey, 0);
    m_output.list(records.size());
    for (const PropertyDictionary* record : records) {
        m_output.raw(recordHead);
        writeEntries(*record, 0);
    }
    for (const Entry& entry : unknown) {
        m_keys.write(m_output, entry.key, 0);
        writeValue(entry.value, 0);
    }
}

void PayloadWriter::writeEntries(const PropertyDictionary& dictionary, int depth) {
    m_output.map(dictionary.size());
    std::size_t place = 0;
    for (const Entry& entry : dictionary) {
        m_keys.write(m_output, entry.key, place++);
        writeValue(entry.value, depth);
    }
}

void PayloadWriter::writeValue(const Value& value, int depth) {
    const auto write = [&](const auto& content) {
        using Content = std::remove_cvref_t<decltype(content)>;
        if constexpr (std::is_same_v<Content, Null>)
            m_output.null();
        else if constexpr (std::is_same_v<Content, bool>)
            m_output.boolean(content);
        else if constexpr (std::is_same_v<Content, std::int64_t>)
            m_output.integer(content);
        else if constexpr (std::is_same_v<Content, std::uint64_t>)
            m_output.unsignedNumber(content);
        else if constexpr (std::is_same_v<Content, double>)
            m_output.real(content);
        else if constexpr (std::is_same_v<Content, SharedText>)
            m_output.text(content);
        else if constexpr (std::is_same_v<Content, Bytes>)
            m_output.bytes(content.data);
        else if (!enterNested(content->size(), depth + 1))
            return; // withinBounds() tells
        else if constexpr (std::is_same_v<Content, std::shared_ptr<const PropertyDictionary>>)
            writeEntries(*content, depth + 1);
        else {
            m_output.list(content->size());
            for (const Value& element : *content)
                writeValue(element, depth + 1);
        }
    };
    std::visit(write, value.content());
}

bool PayloadWriter::enterNested(std::size_t count, int depth) {
    m_nestedCount += count;
    m_greatestDepth = std::max(m_greatestDepth, depth);
    return withinBounds();
}

} // namespace

Result<std::string> encodeArchive(std::string_view recordsKey,
                                  std::span<const PropertyDictionary* const> records,
                                  std::span<const PropertyDictionary::Entry> unknown) {
    const Error refusal{ErrorCode::InvalidArgument, "encode archive", {}, 0};
    const PropertyKey key(recordsKey);
    if (!keysAreUnique(unknown) || std::ranges::find(unknown, key, &Entry::key) != unknown.end())
        return refusal;
    ArchiveEnvelopeWriter envelope(RecordArchive::currentVersion, sizeBound(records, unknown));
    PayloadWriter payload(envelope.text());
    payload.write(recordsKey, records, unknown);
    if (!payload.withinBounds())
        return refusal;
    return std::move(envelope).seal();
}

} // namespace veilkeep
