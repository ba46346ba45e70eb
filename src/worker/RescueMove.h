#pragma once

#include "worker/ItemMover.h"

#include <string>

namespace veilkeep {

// As unhideItem(), for whoever brings back all that is hidden without knowing what it is: where its place is
// taken the item gets a numbered name beside it, no link is followed anywhere on the path, and an item below
// several ".SYS_INDEX", one in the other, comes out of all of them. The user root empties no ".SYS_INDEX" to
// which others may write who may not write to the folder (NoHiddenDirectory).
MoveAnswer rescueItem(const std::string& hiddenPath);

} // namespace veilkeep
