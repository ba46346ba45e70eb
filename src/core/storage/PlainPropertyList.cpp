#include "core/storage/PlainPropertyList.h"

#include "core/base/Utf8.h"
#include "core/records/Value.h"
#include "core/storage/XmlText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <vector>

namespace veilkeep {
namespace {

constexpr std::string_view blanks = " \t\r\n";

struct Tag {
    std::string_view name;
    bool closing = false;
    bool empty = false;
};

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80)
        return append(codePoint);
    if (codePoint < 0x800)
        append(0xC0 | codePoint >> 6);
    else if (codePoint < 0x10000)
        append(0xE0 | codePoint >> 12);
    else
        append(0xF0 | codePoint >> 18);
    for (int shift = codePoint < 0x800 ? 0 : codePoint < 0x10000 ? 6 : 12; shift >= 0; shift -= 6)
        append(0x80 | (codePoint >> shift & 0x3F));
}

void appendWithoutEntities(std::string& document, std::string_view text) {
    constexpr std::string_view begin = "<![CDATA[", end = "]]>";
    if (text.find_first_of("<&>") == std::string_view::npos) {
        document += text;
        return;
    }
    document += begin;
    for (auto inner = text.find(end); inner != std::string_view::npos; inner = text.find(end)) {
        constexpr std::size_t cut = 2; // of the three characters, so that neither section holds all
        document.append(text.substr(0, inner + cut)).append(end).append(begin);
        text.remove_prefix(inner + cut);
    }
    document.append(text).append(end);
}

template <class Number, class... Form>
std::optional<Number> wholeNumber(std::string_view text, Form... form) {
    Number number = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, form...);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

template <class Number>
bool appendNumber(std::string& document, std::optional<Number> number) {
    if (!number)
        return false;
    char digits[64];
    document.append(digits, std::to_chars(digits, digits + sizeof digits, *number).ptr);
    return true;
}

// name is what stands between "&" and ";".
bool appendEntity(std::string& text, std::string_view name) {
    struct Named {
        std::string_view name;
        char character;
    };
    constexpr Named known[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const Named& entity : known)
        if (entity.name == name)
            return (text += entity.character, true);
    if (!name.starts_with('#'))
        return false;
    const bool hexadecimal = name.starts_with("#x");
    const auto number = wholeNumber<std::uint32_t>(name.substr(hexadecimal ? 2 : 1), hexadecimal ? 16 : 10);
    if (!number || !isXmlCharacter(*number))
        return false;
    appendUtf8(text, *number);
    return true;
}

// Raw character data: entities replaced, line ends made line feeds.
bool appendCharacters(std::string& text, std::string_view raw, bool withEntities) {
    for (std::size_t index = 0; index < raw.size(); ++index) {
        if (raw[index] == '\r') {
            if (!raw.substr(index + 1).starts_with('\n'))
                text += '\n';
        } else if (raw[index] == '&' && withEntities) {
            const auto end = raw.find(';', index);
            if (end == std::string_view::npos || !appendEntity(text, raw.substr(index + 1, end - index - 1)))
                return false;
            index = end;
        } else
            text += raw[index];
    }
    return true;
}

bool appendBase64(std::string& document, std::string_view text) {
    std::size_t digits = 0, padding = 0;
    for (const char character : text) {
        if (blanks.find(character) != std::string_view::npos)
            continue;
        const bool digit = (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
                           (character >= '0' && character <= '9') || character == '+' || character == '/';
        if (character == '=' ? ++padding > 2 : !digit || padding > 0)
            return false;
        ++digits;
        document += character;
    }
    return digits % 4 == 0;
}

class Scanner {
public:
    explicit Scanner(std::string_view xml) : m_rest(xml) {}

    bool scan();
    std::string takePlain() { return std::move(m_plain); }

private:
    enum class Open { List, DictionaryBeforeKey, DictionaryBeforeValue };

    bool skipAround(bool beforeRoot);
    bool skipThrough(std::string_view begin, std::string_view end);
    bool skipDocumentType();
    std::optional<Tag> readTag();
    bool openingPropertyList();
    bool scanTag(const Tag& tag);
    bool open(const Tag& tag);
    bool close(const Tag& tag);
    bool scanLeaf(const Tag& tag);
    bool appendLeaf(std::string_view name, const std::string& content);
    std::optional<std::string> readContent(const Tag& tag);
    bool takePlace(bool key);

    std::string_view m_rest;
    std::string m_plain;
    std::vector<Open> m_open;
};

bool Scanner::scan() {
    skipThrough("\xEF\xBB\xBF", "");
    if (!skipAround(true) || !openingPropertyList() || !skipAround(false))
        return false;
    const std::optional<Tag> root = readTag();
    if (!root || root->name != "dict" || root->closing || !open(*root))
        return false;
    while (!m_open.empty()) {
        const std::optional<Tag> tag = skipAround(false) ? readTag() : std::nullopt;
        if (!tag || !scanTag(*tag))
            return false;
    }
    const std::optional<Tag> end = skipAround(false) ? readTag() : std::nullopt;
    m_plain += "</plist>";
    return end && end->closing && end->name == "plist" && skipAround(false) && m_rest.empty();
}

// Blanks, comments and processing instructions; before the root also a document type.
bool Scanner::skipAround(bool beforeRoot) {
    for (;;) {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(blanks), m_rest.size()));
        if (skipThrough("<!--", "-->") || skipThrough("<?", "?>") || (beforeRoot && skipDocumentType()))
            continue;
        return !m_rest.starts_with("<!") && !m_rest.starts_with("<?");
    }
}

bool Scanner::skipThrough(std::string_view begin, std::string_view end) {
    if (!m_rest.starts_with(begin))
        return false;
    const auto found = m_rest.find(end, begin.size());
    if (found == std::string_view::npos)
        return false;
    m_rest.remove_prefix(found + end.size());
    return true;
}

// Without definitions of its own, which could hold entities.
bool Scanner::skipDocumentType() {
    constexpr std::string_view begin = "<!DOCTYPE";
    const auto end = m_rest.starts_with(begin) ? m_rest.find_first_of("[<>", begin.size()) : m_rest.npos;
    if (end == std::string_view::npos || m_rest[end] != '>')
        return false;
    m_rest.remove_prefix(end + 1);
    return true;
}

std::optional<Tag> Scanner::readTag() {
    const auto end = m_rest.find('>');
    if (!m_rest.starts_with('<') || end == std::string_view::npos)
        return std::nullopt;
    std::string_view inner = m_rest.substr(1, end - 1);
    Tag tag;
    if ((tag.closing = inner.starts_with('/')))
        inner.remove_prefix(1);
    else if ((tag.empty = inner.ends_with('/')))
        inner.remove_suffix(1);
    tag.name = inner.substr(0, inner.find_last_not_of(blanks) + 1);
    m_rest.remove_prefix(end + 1);
    return tag;
}

// The one element whose attributes are let through; they say nothing that matters.
bool Scanner::openingPropertyList() {
    const std::optional<Tag> tag = readTag();
    if (!tag || tag->closing || tag->empty || tag->name.find('<') != std::string_view::npos)
        return false;
    m_plain = "<plist version=\"1.0\">";
    return tag->name.substr(0, tag->name.find_first_of(blanks)) == "plist";
}

bool Scanner::scanTag(const Tag& tag) {
    if (tag.closing)
        return close(tag);
    if (tag.name == "dict" || tag.name == "array")
        return takePlace(false) && open(tag);
    return takePlace(tag.name == "key") && scanLeaf(tag);
}

bool Scanner::open(const Tag& tag) {
    if (m_open.size() > maximumValueNesting)
        return false;
    m_plain.append("<").append(tag.name).append(">");
    m_open.push_back(tag.name == "dict" ? Open::DictionaryBeforeKey : Open::List);
    return tag.empty ? close(tag) : true;
}

bool Scanner::close(const Tag& tag) {
    const std::string_view expected = m_open.back() == Open::List ? "array" : "dict";
    if (tag.name != expected || m_open.back() == Open::DictionaryBeforeValue)
        return false;
    m_plain.append("</").append(tag.name).append(">");
    m_open.pop_back();
    return true;
}

// Whether a key, or a value, may stand here.
bool Scanner::takePlace(bool key) {
    Open& innermost = m_open.back();
    switch (innermost) {
    case Open::List:
        return !key;
    case Open::DictionaryBeforeKey:
        innermost = Open::DictionaryBeforeValue;
        return key;
    case Open::DictionaryBeforeValue:
        innermost = Open::DictionaryBeforeKey;
        return !key;
    }
    return false;
}

bool Scanner::scanLeaf(const Tag& tag) {
    const std::optional<std::string> content = readContent(tag);
    if (!content)
        return false;
    if (tag.name == "true" || tag.name == "false") {
        m_plain.append("<").append(tag.name).append("/>");
        return trimmed(*content).empty();
    }
    const std::string_view name = tag.name == "date" ? "string" : tag.name;
    m_plain.append("<").append(name).append(">");
    const bool known = appendLeaf(name, *content);
    m_plain.append("</").append(name).append(">");
    return known;
}

bool Scanner::appendLeaf(std::string_view name, const std::string& content) {
    if (name == "string" || name == "key") {
        appendWithoutEntities(m_plain, content);
        return name == "string" || fitsXmlText(content);
    }
    if (name == "data")
        return appendBase64(m_plain, content);
    const std::string_view text = trimmed(content);
    if (name == "real")
        return appendNumber(m_plain, wholeNumber<double>(text));
    if (name != "integer")
        return false;
    if (text.starts_with('-'))
        return appendNumber(m_plain, wholeNumber<std::int64_t>(text));
    return appendNumber(m_plain, wholeNumber<std::uint64_t>(text));
}

// The text up to the element's end.
std::optional<std::string> Scanner::readContent(const Tag& tag) {
    std::string content;
    while (!tag.empty) {
        const auto markup = m_rest.find('<');
        if (markup == std::string_view::npos || !appendCharacters(content, m_rest.substr(0, markup), true))
            return std::nullopt;
        m_rest.remove_prefix(markup);
        const std::string_view here = m_rest;
        constexpr std::string_view sectionBegin = "<![CDATA[", sectionEnd = "]]>";
        if (skipThrough(sectionBegin, sectionEnd)) {
            const auto size = here.size() - m_rest.size() - sectionBegin.size() - sectionEnd.size();
            appendCharacters(content, here.substr(sectionBegin.size(), size), false);
        } else if (!skipThrough("<!--", "-->")) {
            const std::optional<Tag> end = readTag();
            if (!end || !end->closing || end->name != tag.name)
                return std::nullopt;
            break;
        }
    }
    return content;
}

bool holdsOnlyXmlCharacters(std::string_view xml) {
    while (!xml.empty()) {
        const Utf8Character character = firstUtf8Character(xml);
        if (!character.valid || !isXmlCharacter(character.codePoint))
            return false;
        xml.remove_prefix(character.length);
    }
    return true;
}

} // namespace

std::optional<std::string> plainPropertyList(std::string_view xml) {
    Scanner scanner(xml);
    if (!holdsOnlyXmlCharacters(xml) || !scanner.scan())
        return std::nullopt;
    return scanner.takePlain();
}

} // namespace veilkeep
