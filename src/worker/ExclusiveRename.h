#pragma once

#include <string>

namespace veilkeep {

// A name within an open directory.
struct Place {
    int directory = -1;
    std::string name;
};

// Moves the item at `from` to the free place `to` of the same volume by renaming alone; nothing that exists
// at `to` is ever replaced and nothing is copied. `hiddenDirectory` is the ".SYS_INDEX" among the two
// directories: where the file system cannot rename without replacing, the move takes two steps, and these are
// done under a lock on it that whoever puts half-done moves right takes as well. Answers 0 or errno; after an
// error the item is at `from` as before.
int renameExclusively(const Place& from, const Place& to, int hiddenDirectory);

} // namespace veilkeep
