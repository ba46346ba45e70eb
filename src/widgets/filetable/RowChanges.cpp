#include "widgets/filetable/RowChanges.h"

namespace veilkeep {
namespace {

using Files = std::vector<ListedFile>;

void add(std::vector<RowRun>& runs, std::size_t row) {
    if (!runs.empty() && runs.back().first + runs.back().count == row)
        ++runs.back().count;
    else
        runs.push_back({row, 1});
}

std::optional<RowChanges> along(const Files& order, const Files& before, const Files& after,
                                std::size_t maximumRuns) {
    RowChanges changes;
    std::size_t old = 0, now = 0;
    for (const ListedFile& file : order) {
        const bool wasThere = old < before.size() && before[old] == file;
        const bool isThere = now < after.size() && after[now] == file;
        if (wasThere && !isThere)
            add(changes.removed, old);
        if (isThere && !wasThere)
            add(changes.inserted, now);
        old += wasThere;
        now += isThere;
        if (changes.removed.size() + changes.inserted.size() > maximumRuns)
            return std::nullopt;
    }
    return old == before.size() && now == after.size() ? std::optional(std::move(changes)) : std::nullopt;
}

} // namespace

// What has left the list is in no order but the one before.
std::optional<RowChanges> rowChanges(const Files& before, const Files& after, const Files& list,
                                     std::size_t maximumRuns) {
    if (auto changes = along(list, before, after, maximumRuns))
        return changes;
    return along(before, before, after, maximumRuns);
}

} // namespace veilkeep
