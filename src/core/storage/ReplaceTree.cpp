#include "core/storage/ReplaceTree.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/TreeCopy.h"
#include "core/log/Log.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>

namespace veilkeep {
namespace {

Result<void> renameItem(const std::string& from, const std::string& to, unsigned int flags = 0) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) != 0)
        return Error::system("rename", from, errno);
    return {};
}

void putBack(const std::string& from, const std::string& to, unsigned int flags = 0) {
    if (const auto back = renameItem(from, to, flags); !back)
        logError("What was there before could not be put back", back.error());
}

Result<void> exchange(const std::string& path, const std::string& newTree, const std::string& aside) {
    if (auto exchanged = renameItem(newTree, path, RENAME_EXCHANGE); !exchanged)
        return exchanged;
    auto moved = renameItem(newTree, aside);
    if (!moved)
        putBack(newTree, path, RENAME_EXCHANGE);
    return moved;
}

Result<void> replaceByTwoSteps(const std::string& path, const std::string& newTree,
                               const std::string& aside) {
    if (auto moved = renameItem(path, aside); !moved)
        return moved;
    auto placed = renameItem(newTree, path);
    if (!placed)
        putBack(aside, path);
    return placed;
}

Result<void> replaceFormer(const std::string& path, const std::string& newTree, const std::string& aside) {
    if (auto removed = removeTree(aside); !removed)
        return removed;
    auto replaced = exchange(path, newTree, aside);
    const bool isUnknown =
        !replaced && (replaced.error().systemError == EINVAL || replaced.error().systemError == ENOSYS);
    return isUnknown ? replaceByTwoSteps(path, newTree, aside) : replaced;
}

} // namespace

Result<bool> replaceTree(const std::string& path, const std::string& newTree, const std::string& aside) {
    const bool isThere = itemExistsAt(path);
    const auto placed = isThere ? replaceFormer(path, newTree, aside) : renameItem(newTree, path);
    if (!placed)
        return placed.error();
    if (const auto synced = syncDirectory(std::string(parentPath(path))); !synced)
        logError("What was put in place may be lost with the power", synced.error());
    if (const auto removed = removeTree(aside); !removed) {
        logError("What was there before is left aside", removed.error());
        return false;
    }
    return isThere;
}

} // namespace veilkeep
