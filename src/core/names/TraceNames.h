#pragma once

#include <set>
#include <string>
#include <vector>

// By which names other programs remember an item.
namespace veilkeep {

// The clean absolute path, the same with the links in its parent followed, and of both the visible form where
// they lead through a hidden directory; each once, the given one first.
std::vector<std::string> spellingsOf(const std::string& path);

// The file names of the thumbnails of one spelling of a path, as the desktops' thumbnail standard gives them.
std::set<std::string> thumbnailNamesOf(const std::string& path);

} // namespace veilkeep
