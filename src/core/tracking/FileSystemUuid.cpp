#include "core/tracking/FileSystemUuid.h"

#include "core/base/Hexadecimal.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/tracking/FileIdentity.h"

#include <fcntl.h>
#include <linux/btrfs.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace veilkeep {
namespace {

using Uuid = std::array<std::uint8_t, 16>;

// Requests that are newer than the system headers this is built with: linux/fs.h (6.9), the one of ext4
// (6.0), and the first form of the one of xfs.
struct GenericUuid {
    std::uint8_t length;
    Uuid uuid;
};
struct Ext4Uuid {
    std::uint32_t length;
    std::uint32_t flags;
    Uuid uuid;
};
struct XfsGeometry {
    std::array<std::uint32_t, 8> sizes;
    std::uint64_t blocks, realtimeBlocks, realtimeExtents, logStart;
    Uuid uuid;
    std::uint32_t stripeUnit, stripeWidth, version, flags, logSectorSize, realtimeSectorSize, directoryBlock;
};
constexpr unsigned long askGeneric = _IOR(0x15, 0, GenericUuid);
constexpr unsigned long askExt4 = _IOR('f', 44, std::uint64_t);
constexpr unsigned long askXfs = _IOR('X', 100, XfsGeometry);

template <class Answer>
bool ask(int fd, unsigned long request, Answer& answer) {
    return retryOnInterrupt([&] { return ::ioctl(fd, request, &answer); }) == 0;
}

Uuid uuidOfExt4(int fd) {
    Ext4Uuid answer = {sizeof(Uuid), 0, {}};
    return ask(fd, askExt4, answer) ? answer.uuid : Uuid{};
}

Uuid uuidOfBtrfs(int fd) {
    btrfs_ioctl_fs_info_args answer = {};
    Uuid uuid = {};
    if (ask(fd, BTRFS_IOC_FS_INFO, answer))
        std::memcpy(uuid.data(), answer.fsid, uuid.size());
    return uuid;
}

Uuid uuidOfXfs(int fd) {
    XfsGeometry answer = {};
    return ask(fd, askXfs, answer) ? answer.uuid : Uuid{};
}

Uuid genericUuid(int fd) {
    GenericUuid answer = {};
    return ask(fd, askGeneric, answer) && answer.length == answer.uuid.size() ? answer.uuid : Uuid{};
}

struct Kind {
    std::string_view type;
    Uuid (*uuid)(int fd);
};
constexpr Kind kinds[] = {
    {"ext4", uuidOfExt4},      {"ext3", uuidOfExt4},   {"ext2", uuidOfExt4},
    {"btrfs", uuidOfBtrfs},    {"xfs", uuidOfXfs},     {"f2fs", genericUuid},
    {"bcachefs", genericUuid}, {"tmpfs", genericUuid}, {"overlay", genericUuid},
};

std::string textOf(const Uuid& uuid) {
    std::string text;
    for (const std::uint8_t byte : uuid) {
        if (text.size() == 8 || text.size() == 13 || text.size() == 18 || text.size() == 23)
            text += '-';
        text += hexadecimalByte(static_cast<char>(byte));
    }
    return text;
}

// False when something else was mounted on the same place later.
bool isIn(const Mount& mount, int fd) {
    const auto status = statusOfItem(fd);
    return status && (!status->mountId || *status->mountId == mount.id);
}

} // namespace

std::string uuidFromFileSystem(const Mount& mount) {
    const auto* const kind = std::ranges::find(kinds, mount.fileSystemType, &Kind::type);
    if (kind == std::end(kinds))
        return {};
    const UniqueFd fd(retryOnInterrupt(
        [&] { return ::open(mount.mountPoint.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    if (!fd || !isIn(mount, fd.get()))
        return {};
    const Uuid uuid = kind->uuid(fd.get());
    return uuid == Uuid{} ? std::string() : textOf(uuid);
}

} // namespace veilkeep
