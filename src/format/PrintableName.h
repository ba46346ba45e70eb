#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace veilkeep {

// A name or path made harmless for a terminal or a line of text, and still telling: control characters,
// characters that turn the writing direction or break lines, and bytes that are no text come out as "\n",
// "\x1b", "\u202e"; a backslash as "\\". What is printed like this is never acted on.
std::string printableName(std::string_view name);

std::string quotedName(std::string_view name); // the same between single quotes

inline QString shownPath(std::string_view path) { // the same for windows and texts
    return QString::fromStdString(printableName(path));
}

} // namespace veilkeep
