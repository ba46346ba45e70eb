#include "session/MovedBundle.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/TreeCopy.h"
#include "core/log/Log.h"

#include <cerrno>
#include <cstdio>

namespace veilkeep {
namespace {

Result<void> renameItem(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0)
        return Error::system("rename", from, errno);
    return {};
}

// From another volume: whole beside its place before it gets its name.
Result<void> copyOver(const std::string& from, const std::string& to) {
    const std::string beside = to + ".new";
    if (auto removed = removeTree(beside); !removed)
        return removed;
    auto copied = copyTree(from, beside);
    if (copied)
        copied = renameItem(beside, to);
    if (!copied) {
        if (const auto removed = removeTree(beside); !removed)
            logError("A part of a copy is left", removed.error());
        return copied;
    }
    if (const auto removed = removeTree(from); !removed)
        logError("What was copied is left at its former place as well", removed.error());
    return {};
}

Result<void> moveItem(const std::string& from, const std::string& to) {
    auto moved = renameItem(from, to);
    return !moved && moved.error().systemError == EXDEV ? copyOver(from, to) : moved;
}

} // namespace

Result<bool> moveToPath(const std::string& path, const std::string& fromPath) {
    const std::string aside = joinPath(parentPath(path), "Veilkeep.old.app");
    if (!itemExistsAt(fromPath))
        return Error::system("move", fromPath, ENOENT);
    const bool isThere = itemExistsAt(path);
    if (isThere) {
        if (auto removed = removeTree(aside); !removed)
            return removed.error();
        if (auto moved = renameItem(path, aside); !moved)
            return moved.error();
    }
    if (const auto moved = moveItem(fromPath, path); !moved) {
        if (const auto back = isThere ? renameItem(aside, path) : Result<void>(); !back)
            logError("The former program could not be put back", back.error());
        return moved.error();
    }
    if (const auto synced = syncDirectory(std::string(parentPath(path))); !synced)
        logError("A moved program may be lost with the power", synced.error());
    if (const auto removed = removeTree(aside); !removed) {
        logError("The former program is left aside", removed.error());
        return false;
    }
    return isThere;
}

} // namespace veilkeep
