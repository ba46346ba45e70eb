#include "worker/TraceLook.h"

#include "core/base/PathText.h"
#include "core/environment/SessionBus.h"
#include "core/environment/TracePlaces.h"
#include "core/filesystem/Directories.h"
#include "core/names/TraceNames.h"
#include "worker/WrittenName.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <vector>

namespace veilkeep {
namespace {

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

bool aDocumentMayName(const WrittenName& name, const std::string& recentDocuments) {
    constexpr std::size_t mostLookedInto = 50; // KDE keeps ten unless told otherwise
    const std::vector<std::string> documents = entryNamesIn(recentDocuments);
    return documents.size() > mostLookedInto ||
           std::ranges::any_of(documents, [&](const std::string& document) {
               return name.mayBeInUrisOf(joinPath(recentDocuments, document));
           });
}

bool anyThumbnailIsThere(const std::string& thumbnails, const std::string& path) {
    const std::vector<std::string> directories = thumbnailDirectories(thumbnails);
    std::set<std::string> names;
    for (const std::string& spelling : spellingsOf(path))
        names.merge(thumbnailNamesOf(spelling));
    return std::ranges::any_of(directories, [&](const std::string& directory) {
        return std::ranges::any_of(
            names, [&](const std::string& name) { return exists(joinPath(directory, name)); });
    });
}

// All that may lie below a directory would have to be looked for.
bool mayHaveThumbnails(const std::string& thumbnails, const std::string& path, bool isDirectory) {
    return exists(thumbnails) && (isDirectory || anyThumbnailIsThere(thumbnails, path));
}

bool activitiesMayName(const WrittenName& name, const std::string& database) {
    return exists(database) && !sessionBusAddress().empty() &&
           (name.mayBeInTextOf(database) || name.mayBeInTextOf(database + "-wal"));
}

} // namespace

bool mayHaveTraces(const std::string& path, bool isDirectory) {
    const TracePlaces places = TracePlaces::current();
    const WrittenName name{std::string(lastPathComponent(path))};
    return name.mayBeInUrisOf(places.recentlyUsed) || aDocumentMayName(name, places.recentDocuments) ||
           mayHaveThumbnails(places.thumbnails, path, isDirectory) ||
           activitiesMayName(name, places.activityDatabase);
}

} // namespace veilkeep
