#pragma once

#include "core/environment/UserDatabase.h"
#include "core/protocol/WorkerError.h"

#include <optional>
#include <string>

namespace veilkeep {

struct MoveAnswer {
    WorkerError error = WorkerError::Success;
    std::string newPath;   // in the caller's spelling of the parent; empty after an error
    std::string takenName; // NameTaken: of what lies where an unhide would have put the item
};

// In both, `askedBy` is the user whom root does it for with administrator rights: what lies around the item
// is taken for an attack where it could be one. Without it the caller does it for himself.

// Moves the item at the absolute path into ".SYS_INDEX" beside it, under its scrambled name, making
// ".SYS_INDEX" where it is missing. After an error nothing has moved and no ".SYS_INDEX" made here is left.
MoveAnswer hideItem(const std::string& path, const User* askedBy = nullptr);

// Moves the hidden item at the absolute path "…/.SYS_INDEX/NAME" back beside its ".SYS_INDEX" and removes
// that when it is empty then, under its own name or the one that is given. After an error nothing has moved.
MoveAnswer unhideItem(const std::string& hiddenPath, const User* askedBy = nullptr,
                      const std::optional<std::string>& underName = std::nullopt);

} // namespace veilkeep
