#pragma once

#include "core/rescue/HiddenFolders.h"
#include "core/rescue/RescueSearch.h"

#include <functional>
#include <string>
#include <vector>

namespace veilkeep {

// Which of the items that were found are copied to another place, and where to, relative to it: under the
// path below what was searched. Those in a hidden folder are copied with it and left out. False from the
// function ends it.
void forEachCopy(
    const HiddenFolders& found, const std::vector<RescueRoot>& roots,
    const std::function<bool(const std::string& hiddenPath, const std::string& place)>& function);

} // namespace veilkeep
