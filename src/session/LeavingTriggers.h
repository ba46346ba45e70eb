#pragma once

#include "core/storage/UserDefaults.h"
#include "platform/SessionEvents.h"

namespace veilkeep {

// Whether AutoHide groups are to vanish at that kind of leaving, as it is stored now; unless the user says
// otherwise, they are.
bool hidesOn(Absence kind, const UserDefaults& defaults);
bool hidesOnQuit(const UserDefaults& defaults); // whoever ends the program, and how

} // namespace veilkeep
