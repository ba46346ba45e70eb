#include "core/records/PropertyDictionary.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <shared_mutex>
#include <unordered_set>

namespace veilkeep {
namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

const std::string* sharedText(std::string_view text) {
    static std::shared_mutex mutex;
    static std::unordered_set<std::string, TextHash, std::equal_to<>> texts; // nodes never move
    {
        const std::shared_lock lock(mutex);
        if (const auto found = texts.find(text); found != texts.end())
            return &*found;
    }
    const std::unique_lock lock(mutex);
    return &*texts.emplace(text).first;
}

} // namespace

PropertyKey::PropertyKey(std::string_view text) : m_text(sharedText(text)) {}

PropertyDictionary::PropertyDictionary(std::initializer_list<Entry> entries) {
    reserve(entries.size());
    for (const Entry& entry : entries)
        set(entry.key, entry.value);
}

std::optional<PropertyDictionary> PropertyDictionary::fromEntries(std::vector<Entry> entries) {
    if (!keysAreUnique(entries))
        return std::nullopt;
    PropertyDictionary dictionary;
    dictionary.m_entries = std::move(entries);
    return dictionary;
}

const Value* PropertyDictionary::find(PropertyKey key) const {
    const auto found = std::ranges::find(m_entries, key, &Entry::key);
    return found == m_entries.end() ? nullptr : &found->value;
}

void PropertyDictionary::set(PropertyKey key, Value value) {
    const auto found = std::ranges::find(m_entries, key, &Entry::key);
    if (found != m_entries.end())
        found->value = std::move(value);
    else
        m_entries.push_back({key, std::move(value)});
}

bool PropertyDictionary::remove(PropertyKey key) {
    return std::erase_if(m_entries, [&](const Entry& entry) { return entry.key == key; }) > 0;
}

bool PropertyDictionary::operator==(const PropertyDictionary& other) const {
    return size() == other.size() && std::ranges::all_of(m_entries, [&](const Entry& entry) {
               const Value* value = other.find(entry.key);
               return value && *value == entry.value;
           });
}

bool keysAreUnique(std::span<const PropertyDictionary::Entry> entries) {
    constexpr std::size_t fewEnoughToCompareAll = 16;
    if (entries.size() <= fewEnoughToCompareAll) {
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            if (std::find_if(entries.begin(), entry,
                             [&](const auto& earlier) { return earlier.key == entry->key; }) != entry)
                return false;
        return true;
    }
    std::vector<const std::string*> texts;
    texts.reserve(entries.size());
    for (const auto& entry : entries)
        texts.push_back(&entry.key.text());
    std::ranges::sort(texts);
    return std::ranges::adjacent_find(texts) == texts.end();
}

} // namespace veilkeep
