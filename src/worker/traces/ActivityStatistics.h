#pragma once

#include "core/base/Result.h"
#include "worker/traces/TracedItems.h"

#include <chrono>
#include <string>

namespace veilkeep {

// Has KDE's activity manager forget the items, when it runs on the bus at the address; it is never started.
// It keeps what it knows of a document until told, whatever else is cleaned.
Result<void> removeActivityStatistics(const std::string& busAddress, const TracedItems& items,
                                      std::chrono::milliseconds limit = std::chrono::seconds(5));

} // namespace veilkeep
