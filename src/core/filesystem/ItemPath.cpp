#include "core/filesystem/ItemPath.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"

#include <unistd.h>

#include <cerrno>

namespace veilkeep {
namespace {

Result<std::string> reachablePath(const std::string& path) {
    auto real = realPath(path);
    return real ? Result<std::string>(*std::move(real)) : Error::system("realpath", path, errno);
}

// What does not exist stays as it is written: an item in a hidden folder is named as if the folder were
// there.
Result<std::string> parentWithoutLinks(const std::string& directory) {
    auto real = reachablePath(directory);
    const bool isMissing =
        !real && (real.error().systemError == ENOENT || real.error().systemError == ENOTDIR);
    if (!isMissing || lastPathComponent(directory) == ".." || itemExistsAt(directory))
        return real;
    auto above = parentWithoutLinks(std::string(parentPath(directory)));
    return above ? joinPath(*above, lastPathComponent(directory)) : std::move(above);
}

Result<std::string> currentDirectory() {
    const MallocedPointer<char> directory(::getcwd(nullptr, 0));
    if (!directory)
        return Error::system("getcwd", ".", errno);
    if (directory.get()[0] != '/') // not below this process's root
        return Error::system("getcwd", directory.get(), ENOENT);
    return std::string(directory.get());
}

std::string withoutDots(std::string_view path) {
    std::string kept;
    for (const std::string_view component : pathComponents(path))
        if (component != ".")
            kept = joinPath(kept, component);
    return kept;
}

} // namespace

Result<std::string> absoluteItemPath(std::string_view argument) {
    if (argument.empty())
        return Error::system("open", {}, ENOENT);
    std::string path(argument);
    if (!argument.starts_with('/')) {
        auto current = currentDirectory();
        if (!current)
            return current;
        path = joinPath(*current, argument);
    }
    path = withoutDots(path);
    if (lastPathComponent(path) == "..")
        return reachablePath(path);
    if (::geteuid() != 0 || path == "/")
        return path;
    const auto parent = parentWithoutLinks(std::string(parentPath(path)));
    if (!parent && parent.error().systemError == ENAMETOOLONG)
        return path;
    return parent ? joinPath(*parent, lastPathComponent(path)) : Result<std::string>(parent.error());
}

} // namespace veilkeep
