#pragma once

#include "worker/ItemMover.h"

#include <string>

namespace veilkeep {

// Moves that ask the person at the screen where there is something to decide, for an ordinary user. Where
// nobody answers they end as they would without asking.

// As hideItem(). Before, programs that would bring the item back into their lists are to be closed; "Cancel"
// is Cancelled, with nothing moved.
MoveAnswer hideItemAsking(const std::string& path);

// As unhideItem(). Where its place is taken the item may come back under another name, or the item in the way
// go to the desktop's trash first; nothing is ever replaced. "Cancel" is Cancelled, with nothing moved.
MoveAnswer unhideItemAsking(const std::string& hiddenPath);

} // namespace veilkeep
