#pragma once

#include "core/records/Value.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// A key of a dictionary. Equal keys share one text for the life of the process, so that 100,000 records do
// not hold 100,000 copies of "OriginalPath" and comparing is comparing two addresses. Any thread.
class PropertyKey {
public:
    PropertyKey(std::string_view text);
    PropertyKey(const char* text) : PropertyKey(std::string_view(text)) {}

    const std::string& text() const { return *m_text; }
    bool operator==(const PropertyKey&) const = default;

private:
    const std::string* m_text;
};

// The properties of one record, or one property list: few keys, each once, in the order in which they came.
// Two dictionaries are equal when they hold the same keys with equal values in whatever order.
class PropertyDictionary {
public:
    struct Entry {
        PropertyKey key;
        Value value;
    };

    PropertyDictionary() = default;
    PropertyDictionary(std::initializer_list<Entry> entries);

    // Takes many entries at once without searching for each; nothing when a key comes twice.
    static std::optional<PropertyDictionary> fromEntries(std::vector<Entry> entries);

    const Value* find(PropertyKey key) const; // null when the key is absent
    bool contains(PropertyKey key) const { return find(key) != nullptr; }
    void set(PropertyKey key, Value value);
    bool remove(PropertyKey key);

    std::size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }
    void reserve(std::size_t count) { m_entries.reserve(count); }
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

    bool operator==(const PropertyDictionary& other) const;

private:
    std::vector<Entry> m_entries;
};

bool keysAreUnique(std::span<const PropertyDictionary::Entry> entries);

} // namespace veilkeep
