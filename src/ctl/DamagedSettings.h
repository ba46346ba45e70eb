#pragma once

#include "core/storage/UserDefaults.h"
#include "ctl/TerminalOutput.h"

namespace veilkeep {

// Puts damaged settings aside and says where they are kept: at once, and whenever the object, which stores
// them anew, finds them damaged later. Neither is owned. Before anything else uses the settings, for whoever
// notices it first has to tell.
void tellOfDamagedSettings(UserDefaults& defaults, TerminalOutput& output);

} // namespace veilkeep
