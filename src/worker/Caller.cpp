#include "worker/Caller.h"

#include "worker/AdministratorRights.h"

#include <unistd.h>

namespace veilkeep {

Caller Caller::ofThisProcess() {
    const bool hasRights = hasAdministratorRights();
    return {hasRights, hasRights ? userOfAdministratorRights() : std::nullopt};
}

bool Caller::mayAskFor(const WorkerRequest& request) const {
    if (hasRights)
        return askedBy && request.pathIsOnInput;
    return !request.pathIsOnInput || ::geteuid() != 0;
}

bool Caller::mayWrite() const {
    return !hasRights || (askedBy && giveUpAdministratorRights(*askedBy));
}

} // namespace veilkeep
