#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The directories that a user-dirs.dirs names (lines such as XDG_DESKTOP_DIR="$HOME/Desktop"), whatever they
// are called in the user's language. Other lines, and values that begin neither with "$HOME" nor with "/",
// are passed over, as the readers of that format do.
std::vector<std::string> parseUserDirectories(std::string_view content, std::string_view home);

// Those of the user-dirs.dirs in the configuration directory; none where it is absent or unreadable.
std::vector<std::string> userDirectories(const std::string& configHome, const std::string& home);

} // namespace veilkeep
