#pragma once

#include "core/records/SharedText.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veilkeep {

class PropertyDictionary;
class Value;

struct Null {
    bool operator==(const Null&) const = default;
};

// Bytes that need not be text: paths, names on disk, alias records, images.
struct Bytes {
    SharedText data;
    bool operator==(const Bytes&) const = default;
};

using ValueList = std::vector<Value>;

// How deep lists and dictionaries may lie in each other in anything that is stored.
inline constexpr int maximumValueNesting = 64;

// One value of a record or a property list. Text (SharedText) is meant to be UTF-8. Lists and dictionaries
// are carried only so that what a later version stored is kept; they are shared and never changed.
class Value {
public:
    using Content = std::variant<Null, bool, std::int64_t, std::uint64_t, double, SharedText, Bytes,
                                 std::shared_ptr<const ValueList>, std::shared_ptr<const PropertyDictionary>>;

    Value() = default;
    Value(Null) {}
    Value(bool value) : m_content(value) {}
    Value(std::int64_t value) : m_content(value) {}
    Value(std::uint64_t value) : m_content(value) {}
    Value(double value) : m_content(value) {}
    Value(SharedText text) : m_content(std::move(text)) {}
    Value(const std::string& text) : m_content(SharedText(text)) {}
    Value(const char* text) : m_content(SharedText(text)) {}
    Value(Bytes bytes) : m_content(std::move(bytes)) {}
    Value(ValueList list);
    Value(PropertyDictionary dictionary);

    const Content& content() const { return m_content; }
    bool isNull() const { return std::holds_alternative<Null>(m_content); }

    // Each answers nothing for a value of another kind. Numbers answer across the integer kinds where the
    // number fits, and a boolean as 0 or 1; asString answers for text and for bytes.
    std::optional<std::int64_t> asInteger() const;
    std::optional<std::uint64_t> asUnsigned() const;
    std::optional<bool> asBoolean() const; // any number: false only for 0
    std::optional<double> asReal() const;
    std::optional<std::string_view> asString() const;

    // Same kind and same value, lists and dictionaries to the depth. The two integer kinds are one here,
    // because stored numbers come back as std::int64_t wherever they fit.
    bool operator==(const Value& other) const;

private:
    Content m_content;
};

} // namespace veilkeep
