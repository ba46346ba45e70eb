#pragma once

#include "core/environment/UserDatabase.h"
#include "worker/WorkerRequest.h"

#include <optional>

namespace veilkeep {

// On whose behalf this process runs.
struct Caller {
    bool hasRights = false;      // administrator rights
    std::optional<User> askedBy; // for them; nothing where that is not to be told

    static Caller ofThisProcess();

    // Administrator rights are for one path on standard input, and that is for nobody else who is root.
    bool mayAskFor(const WorkerRequest& request) const;

    // Whether a file may be written beside the move itself: with the asking user's own rights only, and the
    // administrator's are given up for good here.
    bool mayWrite() const;
};

} // namespace veilkeep
