#include "core/filesystem/MountPoint.h"

#include "core/base/SystemCall.h"
#include "core/filesystem/MountTable.h"
#include "core/filesystem/ResolvedPath.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace veilkeep {
bool isMountPoint(const std::string& path) {
    struct statx status = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    const int answer = retryOnInterrupt([&] { return ::statx(AT_FDCWD, path.c_str(), flags, 0, &status); });
    if (answer != 0 && errno != ENOSYS)
        return false;
    if (answer == 0 && (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    const auto resolved = withResolvedParent(path);
    return resolved && MountTable::reread()->hasMountPoint(*resolved);
}

} // namespace veilkeep
