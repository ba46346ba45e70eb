#pragma once

#include <sys/types.h>

namespace veilkeep {

// Of an open directory with an access list (ACL) the mode's group rights are the most that anybody in the
// list may have, and not what its group may do. The mode with the group's own rights; where they cannot be
// learned, with those that everybody has.
mode_t modeWithoutAccessList(int directory, mode_t mode);

// Whether what is made in it gets an access list from it.
bool givesAccessList(int directory);

} // namespace veilkeep
