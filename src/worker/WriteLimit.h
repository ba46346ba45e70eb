#pragma once

#include "core/environment/UserDatabase.h"

#include <string>

namespace veilkeep {

// With administrator rights: from now on, and for good, this process and those that it starts make, write,
// rename and take away nothing but what lies below the item's directory, and below the asking user's own
// directories, for a record and the log. The kernel sees to that (Landlock), whatever this program may be
// misled to. One that cannot (before Linux 5.19) leaves all as it is. Whatever else is tried fails with
// EACCES or EXDEV and changes nothing.
void limitWrites(int itemDirectory, const User& askedBy, const std::string& inProgressFolder);

} // namespace veilkeep
