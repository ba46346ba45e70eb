#include "core/filesystem/SharedDirectories.h"

#include "core/base/SystemCall.h"
#include "core/filesystem/AccessList.h"

#include <sys/stat.h>

namespace veilkeep {
namespace {

constexpr mode_t writable = S_IWGRP | S_IWOTH;

bool look(int directory, struct stat& status) {
    return retryOnInterrupt([&] { return ::fstat(directory, &status); }) == 0;
}

} // namespace

bool isOpenToMoreThan(int inner, int outer) {
    struct stat own = {}, above = {};
    if (!look(inner, own) || !look(outer, above))
        return true;
    const mode_t forGroup = modeWithoutAccessList(inner, own.st_mode) & S_IWGRP;
    const mode_t forGroupAbove = modeWithoutAccessList(outer, above.st_mode) & S_IWGRP;
    const bool isOpenToAll = (above.st_mode & S_IWOTH) != 0;
    const bool forMore = (own.st_mode & writable & ~above.st_mode) != 0 || (forGroup & ~forGroupAbove) != 0;
    // With an access list this is the most that anybody named in it may have.
    const bool forOthers = (own.st_mode & S_IWGRP) != 0 && !isOpenToAll &&
                           (own.st_gid != above.st_gid || hasAccessListOfItsOwn(inner, outer));
    const bool lessSticky = (own.st_mode & writable) != 0 && (above.st_mode & ~own.st_mode & S_ISVTX) != 0;
    return forMore || forOthers || lessSticky;
}

bool isSafeToEmptyAsRoot(int inner, int outer) {
    struct stat own = {}, above = {};
    if (!look(inner, own) || !look(outer, above))
        return false;
    const bool isShared = (above.st_mode & writable) != 0;
    const bool ownedWell = own.st_uid == 0 || own.st_uid == above.st_uid || isShared;
    // Who may rename there could have given the inner one's name to a directory that is kept from him.
    constexpr mode_t readable = S_IRGRP | S_IXGRP | S_IROTH | S_IXOTH;
    const bool mayBeAnothers = own.st_uid != above.st_uid || isShared;
    const bool isKeptFromSome = mayBeAnothers && (above.st_mode & ~own.st_mode & readable) != 0;
    return ownedWell && !isKeptFromSome && !isOpenToMoreThan(inner, outer);
}

} // namespace veilkeep
