#include "core/environment/TracePlaces.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"

#include <string_view>

namespace veilkeep {

TracePlaces TracePlaces::current() {
    const XdgDirectories directories = XdgDirectories::current();
    const auto below = [](const std::string& directory, std::string_view name) {
        return directory.empty() ? std::string() : joinPath(directory, name);
    };
    return {below(directories.dataHome, "recently-used.xbel"), below(directories.dataHome, "RecentDocuments"),
            below(directories.cacheHome, "thumbnails"),
            below(directories.dataHome, "kactivitymanagerd/resources/database")};
}

std::vector<std::string> thumbnailDirectories(const std::string& thumbnails) {
    std::vector<std::string> directories;
    for (const char* const size : {"normal", "large", "x-large", "xx-large"})
        directories.push_back(joinPath(thumbnails, size));
    const std::string failures = joinPath(thumbnails, "fail");
    for (const std::string& program : entryNamesIn(failures))
        directories.push_back(joinPath(failures, program));
    return directories;
}

} // namespace veilkeep
