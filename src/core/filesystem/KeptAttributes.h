#pragma once

#include "core/filesystem/Place.h"

#include <sys/stat.h>

namespace veilkeep {

// Gives a copy the owner (as root), rights, times and extended attributes, access lists among them, of what
// it was made from. The set-user-ID and set-group-ID bits and capabilities go along only with the owner, and
// not from a mount that gives them no effect; the group's rights beyond everybody's only with that group.
// False where something could not be kept; never so because the user is not root.

// Of open files and directories.
bool keepAttributes(int from, const struct stat& status, int to);

// Of a link, fifo or socket, but for the extended attributes.
bool keepAttributes(const struct stat& status, const Place& to);

} // namespace veilkeep
