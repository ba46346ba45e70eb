#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// Checks an XML property list from untrusted hands and writes it anew in the plainest form: elements without
// attributes, text without entities (in CDATA sections where it needs them), canonical numbers and base64,
// dates as strings; no comments, no declarations. Nesting is at most maximumValueNesting below the dictionary
// at the root. Nothing for what is not such a list. Lenient parsers read the result in one way only, and none
// has to replace entities, which libplist takes quadratic time for.
std::optional<std::string> plainPropertyList(std::string_view xml);

} // namespace veilkeep
