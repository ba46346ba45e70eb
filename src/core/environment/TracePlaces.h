#pragma once

#include <string>
#include <vector>

namespace veilkeep {

// Where desktops keep what they remember of files. A place is empty where the directory it lies below is not
// known.
struct TracePlaces {
    std::string recentlyUsed;     // the file of bookmarks that GTK and KDE programs share
    std::string recentDocuments;  // KDE: a desktop file for each document
    std::string thumbnails;       // directories by size, and "fail"
    std::string activityDatabase; // of KDE's activity manager; "-wal" beside it

    static TracePlaces current();
};

// The directories that thumbnails are kept in, one for each size, and notes that there is none, one for each
// program.
std::vector<std::string> thumbnailDirectories(const std::string& thumbnails);

} // namespace veilkeep
