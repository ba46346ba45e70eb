#pragma once

#include "core/protocol/WorkerError.h"
#include "worker/Caller.h"
#include "worker/WorkerRequest.h"

namespace veilkeep {

// Moves the item of the request and answers on standard output, where that is wanted; a move that could not
// be told leaves a record. Afterwards traces of a hidden item are cleaned. Answers the exit status: 0 where
// nothing was moved, else what recentsAnswer() reads.
int moveAndAnswer(const WorkerRequest& request, const Caller& caller);

// What could not be told goes to the log.
void answerError(WorkerError error, const Caller& caller);

} // namespace veilkeep
