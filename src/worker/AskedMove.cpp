#include "worker/AskedMove.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "core/names/NameKeeping.h"
#include "core/names/NumberedName.h"
#include "worker/ItemDirectories.h"
#include "worker/OpenLists.h"
#include "worker/Question.h"
#include "worker/TraceCleaning.h"

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

// What an unhide found at its place.
struct Conflict {
    std::string hiddenPath;
    std::string directory;
    std::string name;
    UniqueFd openDirectory;
    struct stat inTheWay = {};
    bool isDirectory = false; // the hidden item
};

std::optional<Conflict> conflictOf(const std::string& hiddenPath, const std::string& name) {
    Conflict conflict;
    conflict.hiddenPath = hiddenPath;
    conflict.directory = parentPath(parentPath(hiddenPath));
    conflict.name = name;
    conflict.openDirectory = openDirectory(conflict.directory);
    if (!conflict.openDirectory)
        return std::nullopt;
    const auto inTheWay = statusOf({conflict.openDirectory.get(), name});
    const UniqueFd hidden = openDirectory(parentPath(hiddenPath));
    const auto item = statusOf({hidden.get(), std::string(lastPathComponent(hiddenPath))});
    if (!inTheWay || !item)
        return std::nullopt;
    conflict.inTheWay = *inTheWay;
    conflict.isDirectory = S_ISDIR(item->st_mode);
    return conflict;
}

std::string firstNameThat(const Conflict& conflict, const std::function<bool(const std::string&)>& takes) {
    return firstNumberedName(conflict.name, conflict.isDirectory, longestNameIn(conflict.openDirectory.get()),
                             takes);
}

std::string freeName(const Conflict& conflict) {
    return firstNameThat(conflict, [&](const std::string& name) {
        return !statusOf({conflict.openDirectory.get(), name});
    });
}

// What was proposed may be taken by now.
MoveAnswer unhideUnderFreeName(const Conflict& conflict, const std::string& proposedName) {
    MoveAnswer answer;
    const auto isFree = [&](const std::string& name) {
        answer = unhideItem(conflict.hiddenPath, nullptr, name);
        return answer.error != WorkerError::NameTaken;
    };
    if (!isFree(proposedName))
        firstNameThat(conflict, isFree);
    return answer;
}

// The device and inode of the item in the way, for the one who asks to make sure that nothing else is put
// into the trash.
std::vector<std::string> fieldsOf(const Conflict& conflict, const std::string& proposedName) {
    return {joinPath(conflict.directory, conflict.name), proposedName,
            std::to_string(conflict.inTheWay.st_dev), std::to_string(conflict.inTheWay.st_ino)};
}

} // namespace

MoveAnswer hideItemAsking(const std::string& path) {
    if (!cleaningIsAskedFor())
        return hideItem(path);
    if (std::vector<std::string> programs = runningProgramsThatRemember(path); !programs.empty()) {
        programs.insert(programs.begin(), path);
        if (Question{"recents-applications", std::move(programs)}.ask() == "Cancel")
            return {WorkerError::Cancelled, {}, {}};
    }
    return hideItem(path);
}

MoveAnswer unhideItemAsking(const std::string& hiddenPath) {
    MoveAnswer first = unhideItem(hiddenPath);
    if (first.error != WorkerError::NameTaken)
        return first;
    const auto conflict = conflictOf(hiddenPath, first.takenName);
    if (!conflict)
        return first;
    const std::string proposedName = freeName(*conflict);
    const auto answer = Question{"overwrite", fieldsOf(*conflict, proposedName)}.ask();
    if (answer == "Replace")
        return unhideItem(hiddenPath); // what was in the way lies in the trash
    if (answer == "Rename")
        return unhideUnderFreeName(*conflict, proposedName);
    return answer == "Cancel" ? MoveAnswer{WorkerError::Cancelled, {}, {}} : first;
}

} // namespace veilkeep
