#pragma once

#include "core/protocol/WorkerError.h"

#include <string>
#include <string_view>

namespace veilkeep {

// The protocol's two lines, without a line break; the path's own bytes.
std::string newFilenameLine(std::string_view path);
std::string errorLine(WorkerError error);

// Writes all of it to the descriptor. False when the reader is gone or takes nothing for ten seconds.
bool deliver(int descriptor, std::string_view line);

} // namespace veilkeep
