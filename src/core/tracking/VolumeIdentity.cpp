#include "core/tracking/VolumeIdentity.h"

#include "core/base/CHandles.h"
#include "core/base/SystemCall.h"
#include "core/tracking/FileSystemUuid.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <optional>

namespace veilkeep {
namespace {

std::optional<dev_t> blockDeviceAt(int directory, const char* path) {
    struct stat status = {};
    if (retryOnInterrupt([&] { return ::fstatat(directory, path, &status, 0); }) != 0 ||
        !S_ISBLK(status.st_mode))
        return std::nullopt;
    return status.st_rdev;
}

// A file system over several devices, as btrfs may be, has a number that is no device's: there the source
// names a device.
std::optional<dev_t> deviceOfMount(const Mount& mount) {
    if (mount.major != 0)
        return makedev(mount.major, mount.minor);
    if (!mount.source.starts_with('/'))
        return std::nullopt;
    return blockDeviceAt(AT_FDCWD, mount.source.c_str());
}

// Empty where no link leads to the device, and on systems that keep no such links.
std::string uuidOfDevice(dev_t device, const std::string& uuidLinks) {
    const DirectoryStream links(::opendir(uuidLinks.c_str()));
    while (const dirent* entry = links ? ::readdir(links.get()) : nullptr)
        if (blockDeviceAt(::dirfd(links.get()), entry->d_name) == device)
            return entry->d_name;
    return {};
}

} // namespace

VolumeIdentity volumeIdentityOfMount(const Mount& mount, const std::string& uuidLinks) {
    VolumeIdentity volume;
    volume.fileSystemType = mount.fileSystemType;
    volume.uuid = uuidFromFileSystem(mount);
    if (const auto device = volume.uuid.empty() ? deviceOfMount(mount) : std::nullopt)
        volume.uuid = uuidOfDevice(*device, uuidLinks);
    if (volume.uuid.empty())
        volume.source = mount.source;
    return volume;
}

} // namespace veilkeep
