#pragma once

#include "core/protocol/WorkerError.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veilkeep {

// How a search for hidden items ended. Where `error` is set, the records written until then are good all the
// same.
struct RestoreSummary {
    WorkerError error = WorkerError::Success;
    std::uint64_t found = 0;      // hidden items, each with a record in the in-progress folder
    std::uint64_t unreadable = 0; // directories that could not be looked into

    bool operator==(const RestoreSummary&) const = default;
};

// What the worker prints after a search: "Error: N", or "Found: N" and "Unreadable: N" in a line each.
std::string summaryText(const RestoreSummary& summary);

// The other way; an unknown error for a text of another form.
RestoreSummary restoreSummaryFromText(std::string_view text);

} // namespace veilkeep
