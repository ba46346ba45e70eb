#include "core/tracking/FileIdentity.h"

#include "core/base/SystemCall.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <new>

namespace veilkeep {
namespace {

ItemKind kindFromMode(unsigned int mode) {
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return ItemKind::Directory;
    case S_IFLNK:
        return ItemKind::Link;
    case S_IFIFO:
        return ItemKind::Fifo;
    case S_IFSOCK:
        return ItemKind::Socket;
    case S_IFCHR:
        return ItemKind::CharacterDevice;
    case S_IFBLK:
        return ItemKind::BlockDevice;
    default:
        return ItemKind::File;
    }
}

FileTime fileTime(const statx_timestamp& time) {
    return {time.tv_sec, time.tv_nsec};
}

} // namespace

Result<ItemStatus> statusOfItem(int fd, const std::string& name) {
    struct statx status = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    const unsigned int wanted = STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID;
    if (retryOnInterrupt([&] { return ::statx(fd, name.c_str(), flags, wanted, &status); }) != 0)
        return Error::system("statx", name, errno);
    ItemStatus item;
    item.identity.kind = kindFromMode(status.stx_mode);
    item.identity.inode = status.stx_ino;
    item.identity.size = status.stx_size;
    item.identity.modificationTime = fileTime(status.stx_mtime);
    if (status.stx_mask & STATX_BTIME)
        item.identity.birthTime = fileTime(status.stx_btime);
    if (status.stx_mask & STATX_MNT_ID)
        item.mountId = status.stx_mnt_id;
    return item;
}

Result<FileHandle> handleOfItem(int fd, const std::string& name) {
    constexpr unsigned int longestHandle = 128; // MAX_HANDLE_SZ of the system
    alignas(file_handle) char buffer[sizeof(file_handle) + longestHandle] = {};
    auto* const handle = new (buffer) file_handle;
    handle->handle_bytes = longestHandle;
    int mountId = 0;
    if (retryOnInterrupt(
            [&] { return ::name_to_handle_at(fd, name.c_str(), handle, &mountId, AT_EMPTY_PATH); }) != 0)
        return Error::system("name_to_handle_at", name, errno);
    return FileHandle{handle->handle_type, std::string(buffer + sizeof(file_handle), handle->handle_bytes)};
}

bool givesLastingHandles(const std::string& fileSystemType) {
    for (const char* const type : {"ext4", "ext3", "ext2", "xfs", "btrfs"})
        if (fileSystemType == type)
            return true;
    return false;
}

} // namespace veilkeep
