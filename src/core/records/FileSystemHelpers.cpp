#include "core/records/FileSystemHelpers.h"

#include "core/base/SystemCall.h"

#include <sys/stat.h>

#include <optional>

namespace veilkeep {
namespace {

using StatCall = int (*)(const char*, struct stat*);

// Nothing also for text that a system call would cut short at a NUL.
std::optional<struct stat> statusAtPath(const std::string& path, StatCall call) {
    struct stat status = {};
    if (path.find('\0') != std::string::npos ||
        retryOnInterrupt([&] { return call(path.c_str(), &status); }) != 0)
        return std::nullopt;
    return status;
}

} // namespace

bool isDirectoryAtPath(const std::string& path) {
    const auto target = statusAtPath(path, ::stat);
    return target && S_ISDIR(target->st_mode);
}

std::uint64_t fileSizeAtPath(const std::string& path) {
    const auto target = statusAtPath(path, ::stat);
    if (!target)
        return 0;
    if (S_ISDIR(target->st_mode))
        return unknownFileSize;
    const auto item = statusAtPath(path, ::lstat);
    return item ? static_cast<std::uint64_t>(item->st_size) : 0;
}

Value fileSizeNumberAtPath(const std::string& path) {
    return fileSizeAtPath(path);
}

} // namespace veilkeep
