#pragma once

#include "core/base/Result.h"
#include "core/log/TimeText.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veilkeep {

// The earlier states of one file, beside it as "NAME.earlier-2026-01-31T12-00-00Z", dated when they were
// taken. A date still to come was given by a clock that was wrong and counts as older than all others, so
// that such copies are the first to go. SafeFile's own; no thread of its own.
class EarlierCopies {
public:
    explicit EarlierCopies(std::string path);

    // Full paths, newest first. None where the directory cannot be read: there is nothing to offer then.
    std::vector<std::string> list(TimePoint now) const;

    // True when none was taken within the last hour.
    bool isDue(TimePoint now) const;

    // Keeps the file as it is now and answers the copy's path. The file must not be written in place after:
    // where the file system allows, the copy is a second name of it.
    Result<std::string> take(TimePoint now) const;

    // Removes the oldest beyond this many.
    Result<void> prune(std::size_t count, TimePoint now) const;

private:
    std::string m_path;
    std::string m_prefix; // of the copies' full paths, to which the date is added
};

} // namespace veilkeep
