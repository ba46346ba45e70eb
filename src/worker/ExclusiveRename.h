#pragma once

#include "core/filesystem/Place.h"

namespace veilkeep {

// Moves the item at `from` to the free place `to` of the same volume by renaming alone; nothing that exists
// at `to` is ever replaced and nothing is copied. `hiddenDirectory` is the ".SYS_INDEX" among the two
// directories: where the file system cannot rename without replacing, the move takes two steps, and these are
// done under a lock on it that whoever puts half-done moves right takes as well. A move that was cut off
// between its steps is finished. Answers 0 or errno (EWOULDBLOCK where others hold the lock for ten seconds);
// after an error the item is at `from` as before.
int renameExclusively(const Place& from, const Place& to, int hiddenDirectory);

} // namespace veilkeep
