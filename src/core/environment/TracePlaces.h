#pragma once

#include <string>

namespace veilkeep {

// Where desktops keep what they remember of files. A place is empty where its base directory is.
struct TracePlaces {
    std::string recentlyUsed;     // the file of bookmarks that GTK and KDE programs share
    std::string recentDocuments;  // KDE: a desktop file for each document
    std::string thumbnails;       // directories by size, and "fail"
    std::string activityDatabase; // of KDE's activity manager; "-wal" beside it

    static TracePlaces current();
};

// The sizes that thumbnails are kept in, each a directory of its own.
inline constexpr const char* thumbnailSizes[] = {"normal", "large", "x-large", "xx-large"};

// Where the user's message bus listens; empty where there is none.
std::string sessionBusAddress();

} // namespace veilkeep
