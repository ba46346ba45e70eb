#include "core/rescue/RescuePlan.h"

#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/filesystem/SharedDirectories.h"
#include "core/names/HiddenName.h"
#include "core/names/NameKeeping.h"
#include "core/names/NumberedName.h"
#include "core/rescue/RescueMoves.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// Both directories that a move changes.
struct OpenFolders {
    UniqueFd visible, hidden;
    int error = 0; // errno: why nothing can be moved between them
};

int mayChange(int directory) {
    return ::faccessat(directory, ".", W_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

// One ".SYS_INDEX" may lie in another; each is looked at beside what holds it.
OpenFolders openFolders(const std::string& hiddenDirectory) {
    OpenFolders open;
    std::string path(withoutHiddenDirectories(hiddenDirectory));
    open.visible = openDirectoryWithoutLinks(path);
    open.error = open.visible ? mayChange(open.visible.get()) : errno;
    while (open.error == 0 && path.size() < hiddenDirectory.size()) {
        path = joinPath(path, hiddenDirectoryName);
        const UniqueFd above = std::exchange(open.hidden, openDirectoryWithoutLinks(path));
        if (!open.hidden)
            open.error = errno;
        else if (::geteuid() == 0 &&
                 !isSafeToEmptyAsRoot(open.hidden.get(), above ? above.get() : open.visible.get()))
            open.error = ENOTDIR;
    }
    if (open.error == 0)
        open.error = mayChange(open.hidden.get());
    return open;
}

// What a cut-off move has left there is no other item.
bool isTaken(const Place& visible, const Place& hidden) {
    return statusOf(visible) && leftoverAt(visible, hidden) != MoveLeftover::SecondName;
}

std::string freeName(const Place& visible, const std::set<std::string>& given, bool isDirectory) {
    return firstNumberedName(visible.name, isDirectory, longestNameIn(visible.directory),
                             [&](const std::string& name) {
                                 return !given.contains(name) && !statusOf({visible.directory, name});
                             });
}

// A folder that changes its parent is written to itself.
bool isLockedFolder(const Place& item, const struct stat& status) {
    return S_ISDIR(status.st_mode) && ::geteuid() != 0 &&
           ::faccessat(item.directory, item.name.c_str(), W_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) != 0;
}

} // namespace

RescuePlan::RescuePlan(const HiddenFolders& folders) : m_folders(folders) {
    folders.forEach([this](const HiddenFolder& folder) { return lookAt(folder), true; });
}

void RescuePlan::lookAt(const HiddenFolder& folder) {
    using enum RescueStep::Outcome;
    const OpenFolders open = openFolders(folder.path);
    std::set<std::string> given;
    for (const std::string& name : folder.names) {
        const Place hidden{open.hidden.get(), name};
        Place visible{open.visible.get(), visibleName(name)};
        Exception exception;
        const auto status = open.error == 0 ? statusOf(hidden) : std::nullopt;
        if (open.error != 0)
            exception = {CannotBeMoved, open.error, {}};
        else if (!status)
            exception = {CannotBeMoved, errno, {}};
        else if (isTooLongToMove(folder.path.size() + 1 + name.size()))
            exception = {CannotBeMoved, E2BIG, {}};
        else if (isLockedFolder(hidden, *status))
            exception = {CannotBeMoved, EACCES, {}};
        else if (given.contains(visible.name) || isTaken(visible, hidden))
            exception = {GetsNumber, 0, freeName(visible, given, S_ISDIR(status->st_mode))};
        else if (visible.name == name && scrambledName(name) != name)
            exception = {KeepsName, 0, {}};
        if (exception.error == 0)
            given.insert(exception.name.empty() ? visible.name : exception.name);
        if (exception.outcome != ComesBack)
            m_exceptions.emplace(joinPath(folder.path, name), std::move(exception));
    }
}

void RescuePlan::forEach(const std::function<bool(const RescueStep&)>& function) const {
    m_folders.forEach([&](const HiddenFolder& folder) {
        for (const std::string& name : folder.names) {
            const std::string path = joinPath(folder.path, name);
            const auto exception = m_exceptions.find(path);
            RescueStep step{path, placeOf(path), RescueStep::Outcome::ComesBack, 0};
            if (exception != m_exceptions.end()) {
                step.outcome = exception->second.outcome;
                step.error = exception->second.error;
            }
            if (!function(step))
                return false;
        }
        return true;
    });
}

// Folders around it that stay where they are keep their part of the path.
std::string RescuePlan::placeOf(const std::string& hiddenPath) const {
    std::string before, place;
    bool inHiddenDirectory = false;
    for (const std::string_view component : pathComponents(hiddenPath)) {
        before = joinPath(before, component);
        if (component == hiddenDirectoryName) {
            inHiddenDirectory = true;
            continue;
        }
        std::string name(component);
        if (std::exchange(inHiddenDirectory, false)) {
            const auto exception = m_exceptions.find(before);
            const bool isFound = before == hiddenPath || m_folders.contains(before);
            const bool isMoved = isFound && (exception == m_exceptions.end() || exception->second.error == 0);
            if (!isMoved)
                name = joinPath(hiddenDirectoryName, component);
            else if (exception != m_exceptions.end() && !exception->second.name.empty())
                name = exception->second.name;
            else
                name = visibleName(component);
        }
        place = joinPath(place, name);
    }
    return place;
}

} // namespace veilkeep
