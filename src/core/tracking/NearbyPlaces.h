#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// Where an item may lie after it, or any directory above it, was hidden or brought back.
struct NearbyPlaces {
    std::vector<std::string> paths;       // the item's own two names in each of the directories
    std::vector<std::string> directories; // each form of the item's directory that exists
};

// The path is absolute; what lies above `base`, which it begins with, stays as it is. At most some hundred
// places; on the disk only the directories on the way are looked at.
NearbyPlaces placesNear(const std::string& path, std::string_view base);

} // namespace veilkeep
