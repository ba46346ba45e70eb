#include "core/base/CLocaleScope.h"
#include "core/storage/PropertyList.h"
#include "core/storage/XmlText.h"

#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace veilkeep {
namespace {

std::string base64(std::string_view bytes) {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t groupSize = 3, digitCount = 4, bitsOfDigit = 6;
    std::string text;
    text.reserve((bytes.size() + groupSize - 1) / groupSize * digitCount);
    for (std::size_t begin = 0; begin < bytes.size(); begin += groupSize) {
        const std::string_view group = bytes.substr(begin, groupSize);
        unsigned int bits = 0;
        for (std::size_t index = 0; index < groupSize; ++index)
            bits = bits << 8 | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0u);
        for (std::size_t index = 0; index < digitCount; ++index)
            text +=
                index <= group.size() ? digits[bits >> bitsOfDigit * (digitCount - 1 - index) & 0x3Fu] : '=';
    }
    return text;
}

// The fewest digits that read back as the same number. Not std::to_chars, which would have the mathematical
// library loaded with every program that writes a list.
std::string digitsOf(double number) {
    const CLocaleScope cLocale;
    constexpr int alwaysEnough = 17;
    char digits[32];
    for (int precision = 15;; ++precision) {
        std::snprintf(digits, sizeof digits, "%.*g", precision, number);
        if (precision == alwaysEnough || std::strtod(digits, nullptr) == number)
            return digits;
    }
}

class Writer {
public:
    bool write(const PropertyDictionary& dictionary, int depth);
    std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";

private:
    bool write(const ValueList& list, int depth);
    bool write(const Value& value, int depth);
    void writeNumber(std::string_view name, const std::string& digits, int depth);
    void writeText(std::string_view text, int depth);
    void line(int depth, std::string_view text);
};

bool Writer::write(const PropertyDictionary& dictionary, int depth) {
    if (depth > maximumValueNesting)
        return false;
    line(depth, "<dict>\n");
    for (const PropertyDictionary::Entry& entry : dictionary) {
        if (entry.value.isNull())
            continue;
        if (!fitsXmlText(entry.key.text()))
            return false;
        line(depth + 1, "<key>");
        appendXmlText(document, entry.key.text());
        document += "</key>\n";
        if (!write(entry.value, depth + 1))
            return false;
    }
    line(depth, "</dict>\n");
    return true;
}

bool Writer::write(const ValueList& list, int depth) {
    if (depth > maximumValueNesting)
        return false;
    line(depth, "<array>\n");
    for (const Value& value : list)
        if (!value.isNull() && !write(value, depth + 1))
            return false;
    line(depth, "</array>\n");
    return true;
}

bool Writer::write(const Value& value, int depth) {
    const auto writeContent = [&](const auto& content) {
        using Content = std::remove_cvref_t<decltype(content)>;
        if constexpr (std::is_same_v<Content, Null>)
            return true;
        else if constexpr (std::is_same_v<Content, bool>)
            line(depth, content ? "<true/>\n" : "<false/>\n");
        else if constexpr (std::is_same_v<Content, double>)
            writeNumber("real", digitsOf(content), depth);
        else if constexpr (std::is_integral_v<Content>)
            writeNumber("integer", std::to_string(content), depth);
        else if constexpr (std::is_same_v<Content, SharedText>)
            writeText(content, depth);
        else if constexpr (std::is_same_v<Content, Bytes>)
            line(depth, "<data>" + base64(content.data) + "</data>\n");
        else
            return write(*content, depth);
        return true;
    };
    return std::visit(writeContent, value.content());
}

void Writer::writeNumber(std::string_view name, const std::string& digits, int depth) {
    line(depth, "<");
    document.append(name).append(">").append(digits).append("</").append(name).append(">\n");
}

void Writer::writeText(std::string_view text, int depth) {
    if (!fitsXmlText(text))
        return line(depth, "<data>" + base64(text) + "</data>\n");
    line(depth, "<string>");
    appendXmlText(document, text);
    document += "</string>\n";
}

void Writer::line(int depth, std::string_view text) {
    document.append(static_cast<std::size_t>(depth), '\t');
    document += text;
}

} // namespace

Result<std::string> writePropertyList(const PropertyDictionary& dictionary) {
    Writer writer;
    if (!writer.write(dictionary, 0))
        return Error{ErrorCode::InvalidArgument, "write property list", {}, 0};
    writer.document += "</plist>\n";
    if (writer.document.size() > maximumPropertyListSize)
        return Error{ErrorCode::TooLarge, "write property list", {}, 0};
    return std::move(writer.document);
}

} // namespace veilkeep
