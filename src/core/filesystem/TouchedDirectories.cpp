#include "core/filesystem/TouchedDirectories.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"

#include <cerrno>
#include <utility>

namespace veilkeep {

bool TouchedDirectories::hasBelow(const std::string& directory) const {
    const auto below = m_directories.lower_bound(directory + "/");
    return m_directories.contains(directory) ||
           (below != m_directories.end() && isSameOrBelow(*below, directory));
}

std::vector<Error> TouchedDirectories::sync() {
    std::vector<Error> troubles;
    for (const std::string& directory : std::exchange(m_directories, {}))
        if (auto synced = syncDirectory(directory); !synced && synced.error().systemError != ENOENT)
            troubles.push_back(std::move(synced).error());
    return troubles;
}

} // namespace veilkeep
