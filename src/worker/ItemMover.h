#pragma once

#include "core/protocol/WorkerError.h"

#include <string>

namespace veilkeep {

struct MoveAnswer {
    WorkerError error = WorkerError::Success;
    std::string newPath; // in the caller's spelling of the parent; empty after an error
};

// Moves the item at the absolute path into ".SYS_INDEX" beside it, under its scrambled name, making
// ".SYS_INDEX" where it is missing. After an error nothing has moved and no ".SYS_INDEX" made here is left.
MoveAnswer hideItem(const std::string& path);

// Moves the hidden item at the absolute path "…/.SYS_INDEX/NAME" back beside its ".SYS_INDEX" and removes
// that when it is empty then. After an error nothing has moved.
MoveAnswer unhideItem(const std::string& hiddenPath);

} // namespace veilkeep
