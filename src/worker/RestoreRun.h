#pragma once

#include "core/protocol/RestoreSummary.h"

#include <string>

namespace veilkeep {

// Writes a record of each hidden item below the directory into the in-progress folder. Directories that
// cannot be read are passed over and counted, the first ones named in the log. SIGTERM, SIGHUP and SIGINT end
// the search with WorkerError::Cancelled. One run for each process.
RestoreSummary recordHiddenItemsBelow(const std::string& directory, const std::string& inProgressFolder);

} // namespace veilkeep
