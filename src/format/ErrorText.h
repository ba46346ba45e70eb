#pragma once

#include "core/base/Error.h"
#include "core/protocol/WorkerError.h"

#include <QString>

namespace veilkeep {

// What went wrong with an item, as a sentence for the user. A number that the worker is not known to answer
// reads as an unknown error with its number.
QString workerErrorText(int number);
QString workerErrorText(WorkerError error);

// The reason alone, without the path: "No space left on device".
QString errorReason(const Error& error);

QString errorWithPath(const Error& error); // "/disk/list: No space left on device"

} // namespace veilkeep
