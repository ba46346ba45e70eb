#include "core/base/CHandles.h"
#include "core/base/CLocaleScope.h"
#include "core/storage/PlainPropertyList.h"
#include "core/storage/PropertyList.h"
#include "core/storage/XmlText.h"

#include <plist/plist.h>

#include <limits>
#include <memory>

namespace veilkeep {
namespace {

struct PlistFree {
    void operator()(void* node) const { ::plist_free(node); }
};

std::optional<Value> valueOf(plist_t node);

// libplist answers the two's complement for a negative number and does not say so; how it writes the number
// tells.
bool isWrittenNegative(plist_t number) {
    char* xml = nullptr;
    std::uint32_t length = 0;
    ::plist_to_xml(number, &xml, &length);
    const MallocedPointer<char> owned(xml);
    return xml && std::string_view(xml, length).find("<integer>-") != std::string_view::npos;
}

Value integerOf(plist_t node) {
    std::uint64_t number = 0;
    ::plist_get_uint_val(node, &number);
    const bool fits = number <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (fits || isWrittenNegative(node))
        return static_cast<std::int64_t>(number);
    return number;
}

// What the writer would turn into data is bytes from the start, so that writing and reading changes nothing.
Value textOf(plist_t node) {
    std::uint64_t length = 0;
    const char* characters = ::plist_get_string_ptr(node, &length);
    const SharedText text(std::string_view(characters, length));
    return fitsXmlText(text) ? Value(text) : Value(Bytes{text});
}

Value dataOf(plist_t node) {
    std::uint64_t length = 0;
    const char* data = ::plist_get_data_ptr(node, &length);
    return Bytes{data ? std::string_view(data, length) : std::string_view()};
}

std::optional<Value> listOf(plist_t node) {
    ValueList list;
    const std::uint32_t count = ::plist_array_get_size(node);
    list.reserve(count);
    plist_array_iter position = nullptr;
    ::plist_array_new_iter(node, &position);
    const MallocedPointer<void> owned(position);
    for (std::uint32_t index = 0; index < count; ++index) {
        plist_t item = nullptr;
        ::plist_array_next_item(node, position, &item);
        std::optional<Value> value = valueOf(item);
        if (!value)
            return std::nullopt;
        list.push_back(std::move(*value));
    }
    return Value(std::move(list));
}

std::optional<PropertyDictionary> dictionaryOf(plist_t node) {
    std::vector<PropertyDictionary::Entry> entries;
    const std::uint32_t count = ::plist_dict_get_size(node);
    entries.reserve(count);
    plist_dict_iter position = nullptr;
    ::plist_dict_new_iter(node, &position);
    const MallocedPointer<void> owned(position);
    for (std::uint32_t index = 0; index < count; ++index) {
        char* key = nullptr;
        plist_t item = nullptr;
        ::plist_dict_next_item(node, position, &key, &item);
        const MallocedPointer<char> ownedKey(key);
        std::optional<Value> value = valueOf(item);
        if (!key || !value)
            return std::nullopt;
        entries.push_back({PropertyKey(key), std::move(*value)});
    }
    return PropertyDictionary::fromEntries(std::move(entries));
}

// Only kinds that the plain form holds. Its depth is bounded, and so is this recursion.
std::optional<Value> valueOf(plist_t node) {
    switch (::plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        ::plist_get_bool_val(node, &flag);
        return Value(flag != 0);
    }
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_REAL: {
        double real = 0;
        ::plist_get_real_val(node, &real);
        return Value(real);
    }
    case PLIST_STRING:
        return textOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_ARRAY:
        return listOf(node);
    case PLIST_DICT: {
        std::optional<PropertyDictionary> dictionary = dictionaryOf(node);
        return dictionary ? std::optional<Value>(std::move(*dictionary)) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

} // namespace

Result<PropertyDictionary> parsePropertyList(std::string_view xml) {
    if (xml.size() > maximumPropertyListSize)
        return Error{ErrorCode::TooLarge, "read property list", {}, 0};
    const Error damaged = Error::damaged("read property list");
    const std::optional<std::string> plain = plainPropertyList(xml);
    if (!plain)
        return damaged;
    plist_t root = nullptr;
    {
        const CLocaleScope cLocale; // libplist reads reals as the locale has them
        ::plist_from_xml(plain->data(), static_cast<std::uint32_t>(plain->size()), &root);
    }
    const std::unique_ptr<void, PlistFree> owned(root);
    if (!root || ::plist_get_node_type(root) != PLIST_DICT)
        return damaged;
    std::optional<PropertyDictionary> dictionary = dictionaryOf(root);
    if (!dictionary)
        return damaged;
    return std::move(*dictionary);
}

} // namespace veilkeep
