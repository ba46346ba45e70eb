#pragma once

#include "core/storage/UserDefaults.h"
#include "ctl/TerminalOutput.h"

namespace veilkeep {

// Puts damaged settings aside and says where they are kept: at once, and whenever this object finds them
// damaged later, or unreadable, as it stores them. Neither is owned. Before anything else uses the settings,
// for whoever notices it first has to tell; all that is stored afterwards goes through the same object.
void tellOfDamagedSettings(UserDefaults& defaults, TerminalOutput& output);

} // namespace veilkeep
