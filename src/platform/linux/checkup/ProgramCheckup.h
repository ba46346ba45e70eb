#pragma once

#include "platform/linux/checkup/CheckupFacts.h"

#include <string>

namespace veilkeep {

// The bundle of this program, of the given version, and what of Qt its window loads at run time: looked for
// as files, since this program loads none of it.
ProgramFacts lookAtProgram(const std::string& ownVersion);

// Who could ask for administrator rights, and whether the worker may have them.
RightsFacts lookAtRights(const std::string& bundle);

SurroundingsFacts lookAtSurroundings();

} // namespace veilkeep
