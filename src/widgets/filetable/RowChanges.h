#pragma once

#include "filelist/FileList.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace veilkeep {

struct RowRun {
    std::size_t first = 0;
    std::size_t count = 0;

    bool operator==(const RowRun&) const = default;
};

struct RowChanges {
    std::vector<RowRun> removed;  // rows of before, ascending
    std::vector<RowRun> inserted; // rows of after, ascending
};

// What makes one table of records the other, both in the order of the list. Nothing where they have no order
// in common, or where it takes more than that many runs of rows.
std::optional<RowChanges> rowChanges(const std::vector<ListedFile>& before,
                                     const std::vector<ListedFile>& after,
                                     const std::vector<ListedFile>& list, std::size_t maximumRuns);

} // namespace veilkeep
