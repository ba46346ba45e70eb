#include "session/MovedBundle.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/TreeCopy.h"
#include "core/log/Log.h"
#include "core/storage/ReplaceTree.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace veilkeep {
namespace {

// From another volume: whole beside its place, in a directory of its own, before it gets its name.
Result<bool> copyInPlace(const std::string& from, const std::string& path, const std::string& aside) {
    std::string directory = path + ".XXXXXX";
    if (!::mkdtemp(directory.data()))
        return Error::system("mkdtemp", directory, errno);
    const std::string beside = joinPath(directory, "new");
    const auto copied = copyTree(from, beside);
    auto placed = copied ? replaceTree(path, beside, aside) : Result<bool>(copied.error());
    if (const auto removed = removeTree(directory); !removed)
        logError("A part of a copy is left", removed.error());
    if (!placed)
        return placed;
    if (const auto removed = removeTree(from); !removed)
        logError("What was copied is left at its former place as well", removed.error());
    return placed;
}

// Whether one is the other one or lies in it, whatever links lead there.
Result<bool> overlap(const std::string& one, const std::string& other) {
    std::error_code failure;
    const auto first = std::filesystem::weakly_canonical(one + "/.", failure).lexically_normal();
    if (failure)
        return Error::system("resolve", one, failure.value());
    const auto second = std::filesystem::weakly_canonical(other + "/.", failure).lexically_normal();
    if (failure)
        return Error::system("resolve", other, failure.value());
    const auto isIn = [](const std::filesystem::path& inner, const std::filesystem::path& outer) {
        const std::filesystem::path rest = inner.lexically_relative(outer);
        return !rest.empty() && *rest.begin() != "..";
    };
    return isIn(first, second) || isIn(second, first);
}

// Before anything is removed.
Result<void> checkPlaces(const std::string& path, const std::string& aside, const std::string& from) {
    const std::pair<const std::string&, const std::string&> apart[] = {
        {from, path}, {from, aside}, {path, aside}};
    for (const auto& [one, other] : apart) {
        const auto overlaps = overlap(one, other);
        if (!overlaps)
            return overlaps.error();
        if (*overlaps)
            return Error::system("move", one, EINVAL);
    }
    return {};
}

} // namespace

Result<bool> moveToPath(const std::string& path, const std::string& fromPath) {
    const std::string aside = joinPath(parentPath(path), "Veilkeep.old.app");
    if (!itemExistsAt(fromPath))
        return Error::system("move", fromPath, ENOENT);
    if (const auto checked = checkPlaces(path, aside, fromPath); !checked)
        return checked.error();
    auto placed = replaceTree(path, fromPath, aside);
    return !placed && placed.error().systemError == EXDEV ? copyInPlace(fromPath, path, aside) : placed;
}

} // namespace veilkeep
