#pragma once

#include "core/base/Result.h"

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

// Files among the user's own settings, and the directories that they lie in.
namespace veilkeep {

// Puts a file with these bytes there, or leaves what is there as it is. It gets the group and the mode of the
// file that it replaces, where there is one, else that mode.
Result<void> placeFile(const std::string& path, std::string_view bytes, mode_t mode);

// Removes the file, and makes that durable.
Result<void> removePlacedFile(const std::string& path);

// Makes a directory and those above it; how many were missing.
Result<int> makePlace(const std::string& directory);

// The directory and those above it, so many in all; each that is empty when those in it are gone.
struct MadePlace {
    std::string directory;
    int count = 0;
};
void removePlaces(const std::vector<MadePlace>& places);

} // namespace veilkeep
