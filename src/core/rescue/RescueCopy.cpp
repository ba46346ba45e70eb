#include "core/rescue/RescueCopy.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/ContentCopy.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/KeptAttributes.h"
#include "core/filesystem/MountTable.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/names/HiddenName.h"
#include "core/names/NameKeeping.h"
#include "core/names/NumberedName.h"
#include "core/rescue/CopyPlace.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <vector>

namespace veilkeep {
namespace {

constexpr unsigned int deepest = 1'000; // below an item: far more than anybody has, and no danger

// Each level of a tree that is copied takes two descriptors and room on the stack.
void allowDeepTrees() {
    constexpr rlim_t enoughStack = rlim_t{64} << 20;
    rlimit limit = {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
    if (::getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur < enoughStack) {
        limit.rlim_cur = std::min(enoughStack, limit.rlim_max);
        ::setrlimit(RLIMIT_STACK, &limit);
    }
}

// Reading leaves no trace, where the system allows that.
UniqueFd openSource(const Place& place, int flags) {
    const auto open = [&](int more) {
        return retryOnInterrupt([&] {
            return ::openat(place.directory, place.name.c_str(),
                            O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags | more);
        });
    };
    const int quiet = open(O_NOATIME);
    return UniqueFd(quiet < 0 && errno == EPERM ? open(0) : quiet);
}

} // namespace

RescueCopy::RescueCopy(UniqueFd target, std::string targetPath, WalkBoundaries::Kind boundaries,
                       RescueCopyReport report)
    : m_target(std::move(target)),
      m_targetPath(std::move(targetPath)),
      m_boundaryKind(boundaries),
      m_report(std::move(report)) {
    allowDeepTrees();
}

Result<RescueCopy::Copied> RescueCopy::copy(const std::string& hiddenPath, std::string_view place) {
    const std::string folderPath(parentPath(place));
    const UniqueFd source = openDirectoryWithoutLinks(parentPath(hiddenPath));
    if (!source)
        return Error::system("open", hiddenPath, errno);
    auto folder = openTargetFolder(withoutHiddenDirectories(parentPath(hiddenPath)), folderPath);
    if (!folder)
        return std::move(folder).error();
    const Place from{source.get(), std::string(lastPathComponent(hiddenPath))};
    const Place unfinished{folder->get(), unfinishedName()};
    const std::string folderShown = folderPath.empty() ? m_targetPath : joinPath(m_targetPath, folderPath);
    m_boundaries.emplace(*MountTable::current(), parentPath(hiddenPath), m_boundaryKind);
    m_boundaryRootSize = parentPath(hiddenPath).size();
    m_links.clear();
    m_item = -1;
    m_inItem.clear();
    m_isWhole = true;
    auto copied = copyAny(from, hiddenPath, unfinished);
    Result<std::string> name = copied ? giveFreeName(unfinished, std::string(lastPathComponent(place)))
                                      : Result<std::string>(std::move(copied).error());
    if (name)
        return Copied{joinPath(folderShown, *name), m_isWhole};
    Error error = std::move(name).error();
    if (const int notRemoved = removeUnfinished(unfinished); notRemoved != 0)
        m_report.failed(Error::system("remove", joinPath(folderShown, unfinished.name), notRemoved));
    if (error.path.empty())
        error.path = hiddenPath;
    return error;
}

// Each missing folder is made like the one that its items were hidden in.
Result<UniqueFd> RescueCopy::openTargetFolder(std::string_view sourceFolder, std::string_view path) {
    UniqueFd folder(::fcntl(m_target.get(), F_DUPFD_CLOEXEC, 0));
    const std::size_t base = sourceFolder.size() - path.size();
    for (const std::string_view component : pathComponents(path)) {
        const auto end = static_cast<std::size_t>(component.data() + component.size() - path.data());
        auto next =
            makeTargetFolder(sourceFolder.substr(0, base + end), {folder.get(), std::string(component)});
        if (!next)
            return Error::system("open", joinPath(m_targetPath, path.substr(0, end)),
                                 next.error().systemError);
        folder = *std::move(next);
    }
    return folder;
}

Result<UniqueFd> RescueCopy::makeTargetFolder(std::string_view sourceFolder, const Place& place) {
    const bool isMade = ::mkdirat(place.directory, place.name.c_str(), S_IRWXU) == 0;
    if (!isMade && errno != EEXIST)
        return Error::system("mkdir", {}, errno);
    UniqueFd folder(retryOnInterrupt([&] {
        return ::openat(place.directory, place.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }));
    if (!folder)
        return Error::system("open", {}, errno);
    const UniqueFd named = isMade ? openDirectoryWithoutLinks(sourceFolder) : UniqueFd();
    const UniqueFd source = named ? openSource({named.get(), "."}, O_DIRECTORY) : UniqueFd();
    struct stat status = {};
    if (source && ::fstat(source.get(), &status) == 0) {
        status.st_mode |= S_IRWXU; // or nothing could be put there
        m_hasLostAttributes |= !keepAttributes(source.get(), status, folder.get());
    }
    return folder;
}

Result<void> RescueCopy::copyAny(const Place& from, const std::string& path, const Place& to) {
    m_report.progress(path);
    if (m_report.isCancelled())
        return Error::system("copy", path, ECANCELED);
    if (isBoundary(path))
        return Error::system("copy", path, EXDEV);
    const auto status = statusOf(from);
    if (!status)
        return Error::system("lstat", path, errno);
    if (S_ISDIR(status->st_mode))
        return copyDirectory(from, path, to);
    if (isLinked(*status, to))
        return {};
    auto copied =
        S_ISREG(status->st_mode) ? copyFile(from, path, *status, to) : copySpecial(from, path, *status, to);
    if (copied && status->st_nlink > 1)
        m_links.try_emplace({status->st_dev, status->st_ino}, m_inItem + to.name);
    return copied;
}

bool RescueCopy::isBoundary(std::string_view path) const {
    return m_boundaries->mayStopAt(lastPathComponent(path)) &&
           m_boundaries->stopsAt(path.substr(m_boundaryRootSize + 1));
}

// Where the target knows no links it is copied once more.
bool RescueCopy::isLinked(const struct stat& status, const Place& to) {
    const auto first = status.st_nlink > 1 ? m_links.find({status.st_dev, status.st_ino}) : m_links.end();
    return first != m_links.end() &&
           ::linkat(m_item, first->second.c_str(), to.directory, to.name.c_str(), 0) == 0;
}

Result<void> RescueCopy::copyFile(const Place& from, const std::string& path, const struct stat& status,
                                  const Place& to) {
    const UniqueFd source = openSource(from, 0);
    struct stat opened = {};
    if (!source || ::fstat(source.get(), &opened) != 0)
        return Error::system("open", path, errno);
    if (!isSameItem(status, opened)) // somebody put something else there
        return Error::system("open", path, ESTALE);
    const UniqueFd target(
        ::openat(to.directory, to.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!target)
        return Error::system("create", path, errno);
    auto copied = copyContent(source.get(), target.get(), [this] { return !m_report.isCancelled(); });
    if (copied) {
        m_hasLostAttributes |= !keepAttributes(source.get(), opened, target.get());
        return {};
    }
    Error error = std::move(copied).error();
    error.path = path;
    if (::unlinkat(to.directory, to.name.c_str(), 0) == 0)
        return error;
    const int notRemoved = errno; // half of it must not pass for the file
    m_report.failed(error);
    return Error::system("remove", path, notRemoved);
}

// Devices are left out: one from another computer's disk may give rights that nobody meant to give.
Result<void> RescueCopy::copySpecial(const Place& from, const std::string& path, const struct stat& status,
                                     const Place& to) {
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode))
        return Error{ErrorCode::NotAFile, "copy", path, 0};
    const auto made = [&] {
        if (!S_ISLNK(status.st_mode))
            return ::mknodat(to.directory, to.name.c_str(), status.st_mode & (S_IFMT | S_IRWXU), 0);
        std::vector<char> target(PATH_MAX + 1); // ended by a NUL; the system lets no link be longer
        if (::readlinkat(from.directory, from.name.c_str(), target.data(), PATH_MAX) < 0)
            return -1;
        return ::symlinkat(target.data(), to.directory, to.name.c_str());
    };
    if (made() != 0)
        return Error::system("create", path, errno);
    m_hasLostAttributes |= !keepAttributes(status, to);
    return {};
}

Result<void> RescueCopy::copyDirectory(const Place& from, const std::string& path, const Place& to) {
    const UniqueFd source = openSource(from, O_DIRECTORY);
    struct stat status = {};
    if (!source || ::fstat(source.get(), &status) != 0)
        return Error::system("open", path, errno);
    if (m_depth == deepest)
        return Error::system("create", path, ENAMETOOLONG);
    if (::mkdirat(to.directory, to.name.c_str(), S_IRWXU) != 0)
        return Error::system("create", path, errno);
    const UniqueFd target(
        ::openat(to.directory, to.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!target)
        return Error::system("create", path, errno);
    const std::size_t before = m_inItem.size();
    if (m_depth++ == 0)
        m_item = target.get();
    else
        m_inItem += to.name + '/';
    auto copied = copyEntries(source.get(), path, target.get());
    --m_depth;
    m_inItem.resize(before);
    if (copied)
        m_hasLostAttributes |= !keepAttributes(source.get(), status, target.get());
    return copied;
}

// What is hidden in it comes last, since visible items have their names already.
Result<void> RescueCopy::copyEntries(int from, const std::string& path, int to) {
    auto names = entryNames(from, path);
    if (!names)
        return std::move(names).error();
    const std::string hiddenName(hiddenDirectoryName);
    const bool hasHidden = isDirectory({from, hiddenName});
    const auto isPlaceholder = [&](const std::string& name) { // of an unhide that was cut off
        return leftoverAt({from, name}, {from, joinPath(hiddenName, scrambledName(name))}) ==
               MoveLeftover::PlaceholderFile;
    };
    for (const std::string& name : *names) {
        if (hasHidden && (name == hiddenName || isPlaceholder(name)))
            continue;
        if (auto copied = copyEntry({from, name}, joinPath(path, name), {to, name}); !copied)
            return copied;
    }
    return hasHidden ? copyHiddenEntries(from, path, to) : Result<void>();
}

Result<void> RescueCopy::copyHiddenEntries(int from, const std::string& path, int to) {
    const std::string hiddenName(hiddenDirectoryName);
    const std::string hiddenPath = joinPath(path, hiddenName);
    int error = m_depth == deepest ? ENAMETOOLONG : 0;
    if (isBoundary(hiddenPath))
        error = EXDEV;
    const UniqueFd hidden = error == 0 ? openSource({from, hiddenName}, O_DIRECTORY) : UniqueFd();
    if (error == 0 && !hidden)
        error = errno;
    auto names = hidden ? entryNames(hidden.get(), hiddenPath)
                        : Result<std::vector<std::string>>(Error::system("open", hiddenPath, error));
    if (!names) {
        m_isWhole = false;
        m_report.failed(names.error());
        return {};
    }
    for (const std::string& name : *names) {
        const Place item{hidden.get(), name};
        if (name == hiddenDirectoryName && isDirectory(item)) {
            ++m_depth;
            auto copied = copyHiddenEntries(hidden.get(), hiddenPath, to);
            --m_depth;
            if (!copied)
                return copied;
            continue;
        }
        const MoveLeftover leftover = leftoverAt(item, {from, visibleName(name)});
        if (leftover == MoveLeftover::SecondName || leftover == MoveLeftover::PlaceholderFile)
            continue; // of a move that was cut off; the item itself is copied
        if (auto copied = copyEntry(item, joinPath(hiddenPath, name), {to, visibleName(name)}); !copied)
            return copied;
    }
    return {};
}

// An error ends the item's copy; what concerns one file alone is told and passed over.
Result<void> RescueCopy::copyEntry(const Place& from, const std::string& path, const Place& to) {
    const Place free{to.directory, freeNameIn(to)};
    auto copied = copyAny(from, path, free);
    if (copied || mustEnd(copied.error()))
        return copied;
    m_isWhole = false;
    m_report.failed(copied.error());
    return {};
}

bool RescueCopy::mustEnd(const Error& error) const {
    switch (error.systemError) {
    case ECANCELED:
    case ENOSPC:
    case EDQUOT:
    case EROFS:
        return true;
    }
    return error.operation == "remove" || (error.operation == "write" && error.systemError == EIO);
}

Result<void> RescueCopy::sync() const {
    if (::syncfs(m_target.get()) != 0)
        return Error::system("syncfs", m_targetPath, errno);
    return {};
}

} // namespace veilkeep
