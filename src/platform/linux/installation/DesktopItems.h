#pragma once

#include "core/base/Result.h"
#include "core/environment/InstallationPlaces.h"

#include <string>
#include <vector>

namespace veilkeep {

// A small file, or a link, that makes the desktop and the shell know an installed program.
struct DesktopItem {
    std::string path;
    std::string content; // of a file
    std::string target;  // of a link, else empty
};

// All of them, made of the templates in the bundle at the source for one installed at the places.
Result<std::vector<DesktopItem>> desktopItems(const std::string& source, const InstallationPlaces& places);

} // namespace veilkeep
