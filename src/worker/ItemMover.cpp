#include "worker/ItemMover.h"

#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"
#include "core/names/HiddenName.h"
#include "core/names/NameKeeping.h"
#include "worker/ExclusiveRename.h"
#include "worker/FileAccessAs.h"
#include "worker/ItemDirectories.h"

#include <cerrno>

namespace veilkeep {
namespace {

MoveAnswer failed(WorkerError error) {
    return {error, {}, {}};
}
MoveAnswer failedWithErrno(int systemError) {
    return failed(workerErrorFromErrno(systemError));
}

bool namesAnItem(std::string_view path) {
    const std::string_view name = lastPathComponent(path);
    return path.starts_with('/') && name != "/" && name != "." && name != "..";
}

// The files that say what is protected are the user's: with administrator rights they are read with his.
bool isProtected(const std::string& path, const User* askedBy) {
    if (!askedBy)
        return BaseCloakLogic::isProtectedFileAtPath(path);
    const FileAccessAs user(askedBy->id, askedBy->group, FileAccessAs::Rights::OfThatUser);
    return BaseCloakLogic::isProtectedFileAtPath(path);
}

WorkerError reasonNotToHide(const std::string& path, const Place& item, const User* askedBy) {
    if (lastPathComponent(parentPath(path)) == hiddenDirectoryName || isHiddenDirectory(item.directory))
        return WorkerError::AlreadyHidden;
    if (isProtected(path, askedBy))
        return WorkerError::Protected;
    if (refusalToHide(item.name, longestNameIn(item.directory)) != NameRefusal::None)
        return WorkerError::NameCannotBeHidden;
    return WorkerError::Success;
}

struct Attempt {
    int error = 0; // errno
    bool atHiddenDirectory = false;
};

Attempt moveIntoHiddenDirectory(const Place& visible, const std::string& scrambled, const User* askedBy) {
    const HiddenDirectory hidden = openOrMakeHiddenDirectory(visible.directory, askedBy);
    if (hidden.error != 0) {
        if (hidden.made)
            removeHiddenDirectoryIfEmpty(visible.directory);
        return {hidden.error, true};
    }
    const Place place{hidden.fd.get(), scrambled};
    int error = renameExclusively(visible, place, hidden.fd.get());
    // A name that is kept otherwise would unscramble to another one. Where the item cannot go back, it is
    // still found under the name that was given.
    if (error == 0 && !keepsName(place) && renameExclusively(place, visible, hidden.fd.get()) == 0)
        error = EILSEQ;
    if (error != 0 && hidden.made)
        removeHiddenDirectoryIfEmpty(visible.directory);
    return {error, false};
}

// A worker that brings back the last hidden item removes ".SYS_INDEX", at any moment before this one has its
// item in it; then the hide starts again.
Attempt hideInSpiteOfRivals(const Place& visible, const std::string& scrambled, const User* askedBy) {
    constexpr int attempts = 1000;
    Attempt attempt;
    for (int count = 0; count < attempts; ++count) {
        attempt = moveIntoHiddenDirectory(visible, scrambled, askedBy);
        if (attempt.error != ENOENT || !statusOf(visible))
            break;
    }
    return attempt;
}

MoveAnswer failedAtHiddenDirectory(int systemError) {
    if (systemError == ENOTDIR)
        return failed(WorkerError::NoHiddenDirectory);
    const WorkerError error = workerErrorFromErrno(systemError);
    return failed(error == WorkerError::Unknown ? WorkerError::NoHiddenDirectory : error);
}

} // namespace

MoveAnswer hideItem(const std::string& path, const User* askedBy) {
    if (lastPathComponent(path) == "/")
        return failed(WorkerError::Protected);
    if (!namesAnItem(path))
        return failed(WorkerError::Unknown);
    const UniqueFd parent = openDirectory(parentPath(path));
    if (!parent)
        return failedWithErrno(errno);
    const Place visible{parent.get(), std::string(lastPathComponent(path))};
    if (!statusOf(visible))
        return failedWithErrno(errno);
    if (const WorkerError reason = reasonNotToHide(path, visible, askedBy); reason != WorkerError::Success)
        return failed(reason);

    const std::string scrambled = BaseCloakLogic::encryptFileName(visible.name);
    const Attempt attempt = hideInSpiteOfRivals(visible, scrambled, askedBy);
    if (attempt.error != 0)
        return attempt.atHiddenDirectory ? failedAtHiddenDirectory(attempt.error)
                                         : failedWithErrno(attempt.error);
    return {WorkerError::Success, joinPath(joinPath(parentPath(path), hiddenDirectoryName), scrambled), {}};
}

MoveAnswer unhideItem(const std::string& hiddenPath, const User* askedBy,
                      const std::optional<std::string>& underName) {
    const std::string_view hiddenDirectory = parentPath(hiddenPath);
    const std::string name(lastPathComponent(hiddenPath));
    if (!namesAnItem(hiddenPath) || lastPathComponent(hiddenDirectory) != hiddenDirectoryName ||
        name == hiddenDirectoryName)
        return failed(WorkerError::Unknown);
    const std::string_view parentText = parentPath(hiddenDirectory);
    const UniqueFd parent = openDirectory(parentText);
    if (!parent)
        return failedWithErrno(errno);
    const HiddenDirectory hidden = openHiddenDirectory(parent.get(), askedBy);
    if (hidden.error != 0)
        return failedAtHiddenDirectory(hidden.error);

    const Place hiddenPlace{hidden.fd.get(), name};
    Place visible{parent.get(), underName.value_or(visibleName(name))};
    int error = renameExclusively(hiddenPlace, visible, hidden.fd.get());
    if ((error == ENAMETOOLONG || error == EILSEQ) && visible.name != name) {
        visible.name = name; // the item comes back, if not under its own name
        error = renameExclusively(hiddenPlace, visible, hidden.fd.get());
    }
    if (error != 0)
        return {workerErrorFromErrno(error), {}, error == EEXIST ? visible.name : std::string()};
    removeHiddenDirectoryIfEmpty(parent.get());
    return {WorkerError::Success, joinPath(parentText, visible.name), {}};
}

} // namespace veilkeep
