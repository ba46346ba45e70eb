#pragma once

#include "core/base/Error.h"

#include <string>
#include <vector>

namespace veilkeep {

// What became of the program's entries in the menus of file managers. What failed is as it was before; the
// paths of the errors name it.
struct FileManagerChange {
    // One that runs, and takes no notice of the file before it is started anew.
    struct Restart {
        std::string manager;
        std::string path;
    };

    std::vector<std::string> changed = {}; // files
    std::vector<Error> noDirectory = {};   // directories that could not be made
    std::vector<Error> notChanged = {};    // files
    std::vector<Restart> toRestart = {};
    std::vector<std::string> forEverybody = {}; // file managers that keep entries for all users

    bool hasFailed() const { return !noDirectory.empty() || !notChanged.empty(); }
};

// The entries "Hide with Veilkeep" and "Show in Veilkeep" in the menus of the user's file managers.
// Everything is as the disk says at the time of the call. Main thread.
class FileManagerMenu {
public:
    virtual ~FileManagerMenu() = default;

    virtual bool isInstalled() const = 0;         // by the user in any of them, or for everybody in all
    virtual bool isSourceThere() const = 0;       // the bundle holds what is installed
    virtual bool isAnyManagerPresent() const = 0; // that could show the entries

    // For the file managers that are present and have none for everybody. What the user made himself of an
    // entry stays as it is.
    virtual FileManagerChange install() = 0;

    // Brings entries that an older version made, or that start another copy of the program, up to date. Those
    // that are there for everybody as well go.
    virtual FileManagerChange renew() = 0;

    // From all of them, with the directories that were made for it and are empty. An entry that the user
    // changed has failed and stays; those for everybody stay as well.
    virtual FileManagerChange remove() = 0;

    // The names of those that go on as they were, or are not there any more.
    virtual std::vector<std::string> restart(const std::vector<FileManagerChange::Restart>& toRestart) = 0;

protected:
    FileManagerMenu() = default;
    FileManagerMenu(const FileManagerMenu&) = default;
    FileManagerMenu& operator=(const FileManagerMenu&) = default;
};

} // namespace veilkeep
