#pragma once

#include "core/environment/InstallationPlaces.h"

namespace veilkeep {

// Has the desktop's list of who opens which addresses ("mimeinfo.cache") say what the entries beside it say
// now. Nothing where the tool for that is missing: then desktops that read the list alone do not know the
// program's addresses. A list without a line is removed.
void updateDesktopDatabase(const InstallationPlaces& places);

} // namespace veilkeep
