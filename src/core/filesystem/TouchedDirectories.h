#pragma once

#include "core/base/Result.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The directories in which a batch has renamed, to be synced together: a success is told only after that.
// Links are followed.
class TouchedDirectories {
public:
    void touch(std::string_view directory) { m_directories.emplace(directory); }

    // Before a directory is renamed: whether one that waits is it or lies below it, and would no longer be
    // found under its path.
    bool hasBelow(const std::string& directory) const;

    // Syncs all that wait, and answers what could not be; what is gone by now needs none.
    std::vector<Error> sync();

private:
    std::set<std::string> m_directories;
};

} // namespace veilkeep
