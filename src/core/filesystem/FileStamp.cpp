#include "core/filesystem/FileStamp.h"

#include <cerrno>

namespace veilkeep {

FileStamp FileStamp::of(const struct stat& status) {
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec};
}

Result<std::optional<FileStamp>> fileStamp(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return std::optional(FileStamp::of(status));
    if (errno == ENOENT)
        return std::optional<FileStamp>();
    return Error::system("stat", path, errno);
}

} // namespace veilkeep
