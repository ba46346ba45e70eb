#pragma once

#include <sys/types.h>

namespace veilkeep {

// Of an open directory with an access list (ACL) the mode's group rights are the most that anybody in the
// list may have, and not what its group may do. The mode with the group's own rights; where they cannot be
// learned, with those that everybody has.
mode_t modeWithoutAccessList(int directory, mode_t mode);

// Whether it has an access list, and not the very one that the other has; also where that cannot be learned.
bool hasAccessListOfItsOwn(int directory, int other);

// Whether what is made in it gets an access list from it.
bool givesAccessList(int directory);

} // namespace veilkeep
