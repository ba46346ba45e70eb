#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The text with everything replaced that could tell of the user's items: what looks like a path, what stands
// between quotes, and the names. In doubt more of a line goes than has to. Paths of this program's own files,
// below the bundle, stay, and so does the system's reason at the end of a line.
std::string maskedForReport(std::string_view text, const std::vector<std::string>& names,
                            const std::string& bundle);

} // namespace veilkeep
