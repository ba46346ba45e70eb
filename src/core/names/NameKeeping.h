#pragma once

#include "core/filesystem/Place.h"

#include <cstddef>

namespace veilkeep {

// The longest name, in bytes, that the file system of an open directory takes; 255 at most.
std::size_t longestNameIn(int directory);

// Whether the file system of an open directory is one that is known to store every name as it is and to
// rename without replacing. Others may do both.
bool isWellKnownFileSystem(int directory);

// False when the file system stored another name than the one it was given: some drop dots and blanks at a
// name's end. The scrambled form of a dot file ends with a dot.
bool keepsName(const Place& place);

} // namespace veilkeep
