#include "worker/RescueMove.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/SharedDirectories.h"
#include "core/names/HiddenName.h"
#include "core/names/NameKeeping.h"
#include "core/names/NumberedName.h"
#include "worker/ExclusiveRename.h"
#include "worker/ItemDirectories.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

namespace veilkeep {
namespace {

// The folder that an item comes back to, and the ".SYS_INDEX" that it lies in; more than one where they lie
// one in the other, the innermost last.
struct RescueWay {
    std::string directory;
    UniqueFd folder;
    std::vector<UniqueFd> hidden;
    int error = 0; // errno
    bool atHiddenDirectory = false;
};

RescueWay wayOf(std::string_view hiddenDirectory) {
    std::size_t levels = 0;
    for (; lastPathComponent(hiddenDirectory) == hiddenDirectoryName; ++levels)
        hiddenDirectory = parentPath(hiddenDirectory);
    RescueWay way;
    way.directory = hiddenDirectory;
    way.folder = openDirectoryWithoutLinks(hiddenDirectory);
    way.error = way.folder ? 0 : errno;
    for (int above = way.folder.get(); way.error == 0 && way.hidden.size() < levels;
         above = way.hidden.back().get()) {
        HiddenDirectory next = openHiddenDirectory(above, nullptr);
        if (next.error == 0 && ::geteuid() == 0 && !isSafeToEmptyAsRoot(next.fd.get(), above))
            next.error = ENOTDIR;
        way.error = next.error;
        way.atHiddenDirectory = next.error == ENOTDIR || next.error == ELOOP;
        way.hidden.push_back(std::move(next.fd));
    }
    return way;
}

void removeEmptied(const RescueWay& way) {
    for (std::size_t level = way.hidden.size(); level > 0; --level)
        removeHiddenDirectoryIfEmpty(level > 1 ? way.hidden[level - 2].get() : way.folder.get());
}

// 0 or errno; the name is the one that was tried last.
int moveOut(const Place& from, Place& to, int hiddenDirectory) {
    const int error = renameExclusively(from, to, hiddenDirectory);
    if ((error != ENAMETOOLONG && error != EILSEQ) || to.name == from.name)
        return error;
    to.name = from.name; // the item comes back, if not under its own name
    return renameExclusively(from, to, hiddenDirectory);
}

int moveOutUnderFreeName(const Place& from, Place& to, int hiddenDirectory) {
    const auto item = statusOf(from);
    if (!item)
        return errno;
    const std::string taken = to.name;
    int error = EEXIST;
    firstNumberedName(taken, S_ISDIR(item->st_mode), longestNameIn(to.directory),
                      [&](const std::string& name) {
                          to.name = name;
                          error = moveOut(from, to, hiddenDirectory);
                          return error != EEXIST;
                      });
    return error;
}

bool isHiddenItem(const std::string& path) {
    const std::string_view name = lastPathComponent(path);
    return path.starts_with('/') && name != "." && name != ".." && name != hiddenDirectoryName &&
           lastPathComponent(parentPath(path)) == hiddenDirectoryName;
}

} // namespace

MoveAnswer rescueItem(const std::string& hiddenPath) {
    if (!isHiddenItem(hiddenPath))
        return {WorkerError::Unknown, {}, {}};
    const RescueWay way = wayOf(parentPath(hiddenPath));
    if (way.atHiddenDirectory)
        return {WorkerError::NoHiddenDirectory, {}, {}};
    if (way.error != 0)
        return {workerErrorFromErrno(way.error), {}, {}};
    const int hidden = way.hidden.back().get();
    const Place from{hidden, std::string(lastPathComponent(hiddenPath))};
    Place to{way.folder.get(), visibleName(from.name)};
    int error = moveOut(from, to, hidden);
    if (error == EEXIST)
        error = moveOutUnderFreeName(from, to, hidden);
    if (error != 0)
        return {workerErrorFromErrno(error), {}, {}};
    removeEmptied(way);
    return {WorkerError::Success, joinPath(way.directory, to.name), {}};
}

} // namespace veilkeep
