#pragma once

#include "platform/linux/checkup/CheckupFacts.h"

namespace veilkeep {

// The files of the list and the settings, read without the list's lock. Nothing is made, moved or put aside.
DataFacts lookAtData();

// What is to vanish by itself, and who is to see to that from the next login on.
AutoHideFacts lookAtAutoHide(const DataFacts& data);

} // namespace veilkeep
