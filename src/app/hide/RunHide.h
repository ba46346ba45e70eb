#pragma once

#include "platform/OpenRequest.h"

namespace veilkeep {

// "Veilkeep --hide": hides items that the user chose in a menu of the desktop, in a process of its own that
// has no list: whoever owns it does the work, and this process itself where nobody does. What could not be
// hidden is said in a window. The exit status is that of veilkeepctl.
int runHide(char** argv, const OpenRequest& items);

} // namespace veilkeep
