#include "core/tracking/HalfDoneMove.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/names/HiddenName.h"

#include <fcntl.h>

#include <cerrno>
#include <optional>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// The two names of one item, which lie in a directory and in the ".SYS_INDEX" there.
struct BothNames {
    std::string directory;
    std::string visible, hidden;
    bool keepsHidden = false;

    std::string hiddenDirectory() const { return joinPath(directory, hiddenDirectoryName); }
    std::string otherPath() const {
        return keepsHidden ? joinPath(directory, visible) : joinPath(hiddenDirectory(), hidden);
    }
};

// Nothing for what is no item's path or never has another form.
std::optional<BothNames> bothNamesOf(std::string_view path) {
    const std::string name(lastPathComponent(path));
    const std::string_view directory = parentPath(path);
    if (!path.starts_with('/') || name == hiddenDirectoryName ||
        refusalToHide(name) == NameRefusal::NoFileName)
        return std::nullopt;
    if (lastPathComponent(directory) == hiddenDirectoryName)
        return BothNames{std::string(parentPath(directory)), visibleName(name), name, true};
    if (refusalToHide(name) != NameRefusal::None)
        return std::nullopt;
    return BothNames{std::string(directory), name, scrambledName(name), false};
}

bool saysNothingIsThere(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR || systemError == ELOOP;
}

bool isMissing(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) != 0 && saysNothingIsThere(errno);
}

Result<bool> unlessNothingIsThere(std::string path, int systemError) {
    if (saysNothingIsThere(systemError))
        return false;
    return Error::system("open", std::move(path), systemError);
}

Result<bool> healUnderLock(const Place& kept, const Place& other, const BothNames& names, int hiddenDirectory,
                           std::chrono::milliseconds wait) {
    if (leftoverAt(other, kept) == MoveLeftover::None)
        return false;
    if (auto locked = lockExclusively(hiddenDirectory, names.hiddenDirectory(), wait); !locked)
        return std::move(locked).error();
    const MoveLeftover leftover = leftoverAt(other, kept);
    const int error = removeLeftover(other, leftover);
    if (error == ENOTEMPTY || error == EEXIST) // a directory with something in it
        return false;
    if (error != 0)
        return Error::system("unlink", names.otherPath(), error);
    return leftover != MoveLeftover::None;
}

} // namespace

Result<bool> healHalfDoneMove(const std::string& keptPath, std::chrono::milliseconds wait) {
    const auto names = bothNamesOf(keptPath);
    if (!names || isMissing(names->otherPath()))
        return false;
    const UniqueFd directory = openDirectoryInPieces(names->directory, O_PATH);
    if (!directory)
        return unlessNothingIsThere(names->directory, errno);
    const std::string hiddenName(hiddenDirectoryName);
    const UniqueFd hiddenDirectory(retryOnInterrupt([&] {
        return ::openat(directory.get(), hiddenName.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }));
    if (!hiddenDirectory)
        return unlessNothingIsThere(names->hiddenDirectory(), errno);
    const Place visible{directory.get(), names->visible};
    const Place hidden{hiddenDirectory.get(), names->hidden};
    return names->keepsHidden ? healUnderLock(hidden, visible, *names, hiddenDirectory.get(), wait)
                              : healUnderLock(visible, hidden, *names, hiddenDirectory.get(), wait);
}

} // namespace veilkeep
