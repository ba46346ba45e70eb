#include "core/filesystem/MountPoint.h"

#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/filesystem/ResolvedPath.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

namespace veilkeep {
namespace {

std::string mountInfoOfThisProcess() {
    std::string content;
    const UniqueFd fd(retryOnInterrupt([] { return ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC); }));
    char buffer[16384];
    ssize_t count = 0;
    while (fd && (count = retryOnInterrupt([&] { return ::read(fd.get(), buffer, sizeof buffer); })) > 0)
        content.append(buffer, static_cast<std::size_t>(count));
    return content;
}

std::string_view field(std::string_view line, int number) {
    for (; number > 0; --number)
        line.remove_prefix(std::min(line.find(' '), line.size() - 1) + 1);
    return line.substr(0, line.find(' '));
}

bool isOctal(std::string_view digits) {
    return digits.size() == 3 && digits.find_first_not_of("01234567") == std::string_view::npos;
}

// Blanks, line breaks and backslashes are listed as "\" and three octal digits.
std::string withoutEscapes(std::string_view text) {
    std::string plain;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (text.front() != '\\' || !isOctal(text.substr(1, 3))) {
            plain.push_back(text.front());
            continue;
        }
        plain.push_back(static_cast<char>((text[1] - '0') * 64 + (text[2] - '0') * 8 + (text[3] - '0')));
        text.remove_prefix(3);
    }
    return plain;
}

} // namespace

bool listsMountPoint(std::string_view mountInfo, std::string_view path) {
    constexpr int mountPointField = 4;
    while (!mountInfo.empty()) {
        const std::string_view line = mountInfo.substr(0, mountInfo.find('\n'));
        mountInfo.remove_prefix(std::min(line.size() + 1, mountInfo.size()));
        const std::string_view mountPoint = field(line, mountPointField);
        if (mountPoint.starts_with('/') && withoutEscapes(mountPoint) == path)
            return true;
    }
    return false;
}

bool isMountPoint(const std::string& path) {
    struct statx status = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    const int answer = retryOnInterrupt([&] { return ::statx(AT_FDCWD, path.c_str(), flags, 0, &status); });
    if (answer != 0 && errno != ENOSYS)
        return false;
    if (answer == 0 && (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    const auto resolved = withResolvedParent(path);
    return resolved && listsMountPoint(mountInfoOfThisProcess(), *resolved);
}

} // namespace veilkeep
