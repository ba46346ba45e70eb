#pragma once

#include "core/protocol/WorkerError.h"
#include "worker/Caller.h"
#include "worker/WorkerRequest.h"

namespace veilkeep {

// Moves the item of the request and answers on standard output, where that is wanted; a move that could not
// be told leaves a record. Afterwards traces of a hidden item are cleaned. False where nothing was moved.
bool moveAndAnswer(const WorkerRequest& request, const Caller& caller);

// What could not be told goes to the log.
void answerError(WorkerError error, const Caller& caller);

} // namespace veilkeep
