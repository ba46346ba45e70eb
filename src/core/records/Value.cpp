#include "core/records/Value.h"

#include "core/records/PropertyDictionary.h"

#include <limits>

namespace veilkeep {
namespace {

bool isInteger(const Value::Content& content) {
    return std::holds_alternative<std::int64_t>(content) || std::holds_alternative<std::uint64_t>(content);
}

} // namespace

Value::Value(ValueList list) : m_content(std::make_shared<const ValueList>(std::move(list))) {}

Value::Value(PropertyDictionary dictionary)
    : m_content(std::make_shared<const PropertyDictionary>(std::move(dictionary))) {}

std::optional<std::int64_t> Value::asInteger() const {
    if (const auto* number = std::get_if<std::int64_t>(&m_content))
        return *number;
    if (const auto* number = std::get_if<std::uint64_t>(&m_content)) {
        if (*number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return static_cast<std::int64_t>(*number);
    }
    if (const auto* flag = std::get_if<bool>(&m_content))
        return *flag ? 1 : 0;
    return std::nullopt;
}

std::optional<std::uint64_t> Value::asUnsigned() const {
    if (const auto* number = std::get_if<std::uint64_t>(&m_content))
        return *number;
    const auto number = asInteger();
    if (!number || *number < 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(*number);
}

std::optional<bool> Value::asBoolean() const {
    if (const auto* flag = std::get_if<bool>(&m_content))
        return *flag;
    if (const auto* number = std::get_if<std::uint64_t>(&m_content))
        return *number != 0;
    if (const auto* number = std::get_if<std::int64_t>(&m_content))
        return *number != 0;
    return std::nullopt;
}

std::optional<double> Value::asReal() const {
    if (const auto* number = std::get_if<double>(&m_content))
        return *number;
    if (const auto* number = std::get_if<std::int64_t>(&m_content))
        return static_cast<double>(*number);
    if (const auto* number = std::get_if<std::uint64_t>(&m_content))
        return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<std::string_view> Value::asString() const {
    if (const auto* text = std::get_if<SharedText>(&m_content))
        return text->view();
    if (const auto* bytes = std::get_if<Bytes>(&m_content))
        return bytes->data.view();
    return std::nullopt;
}

bool Value::operator==(const Value& other) const {
    if (m_content.index() != other.m_content.index())
        return isInteger(m_content) && isInteger(other.m_content) && asInteger() &&
               asInteger() == other.asInteger();
    if (const auto* list = std::get_if<std::shared_ptr<const ValueList>>(&m_content))
        return **list == **std::get_if<std::shared_ptr<const ValueList>>(&other.m_content);
    if (const auto* dictionary = std::get_if<std::shared_ptr<const PropertyDictionary>>(&m_content))
        return **dictionary == **std::get_if<std::shared_ptr<const PropertyDictionary>>(&other.m_content);
    return m_content == other.m_content;
}

} // namespace veilkeep
