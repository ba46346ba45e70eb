#pragma once

#include <string>
#include <string_view>

namespace veilkeep {

bool isXmlCharacter(char32_t codePoint);

// Whether text put into an XML document comes out of it unchanged: well-formed UTF-8 without control
// characters other than tab and line feed (a carriage return would become one) and without U+FFFE and U+FFFF.
bool fitsXmlText(std::string_view text);

void appendXmlText(std::string& document, std::string_view text);

} // namespace veilkeep
