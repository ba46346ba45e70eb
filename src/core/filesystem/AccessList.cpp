#include "core/filesystem/AccessList.h"

#include "core/base/SystemCall.h"

#include <endian.h>
#include <linux/limits.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <linux/xattr.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {
namespace {

using Buffer = std::array<char, XATTR_SIZE_MAX>;

// Empty where there is none; nothing where that cannot be learned.
std::optional<std::string_view> attribute(int directory, const char* name, Buffer& buffer) {
    // A descriptor that is for nothing but looking (O_PATH) cannot be asked itself.
    const std::string path = "/proc/self/fd/" + std::to_string(directory);
    const ssize_t size =
        retryOnInterrupt([&] { return ::getxattr(path.c_str(), name, buffer.data(), buffer.size()); });
    if (size >= 0)
        return std::string_view(buffer.data(), static_cast<std::size_t>(size));
    return errno == ENODATA || errno == EOPNOTSUPP ? std::optional(std::string_view()) : std::nullopt;
}

// "rwx" as in the last digit of a mode; nothing where the list is none that is known.
std::optional<mode_t> rightsOfOwnGroup(std::string_view list) {
    posix_acl_xattr_entry entry = {};
    list.remove_prefix(std::min(sizeof(posix_acl_xattr_header), list.size()));
    for (; list.size() >= sizeof entry; list.remove_prefix(sizeof entry)) {
        std::memcpy(&entry, list.data(), sizeof entry);
        if (le16toh(entry.e_tag) == ACL_GROUP_OBJ)
            return le16toh(entry.e_perm) & S_IRWXO;
    }
    return std::nullopt;
}

} // namespace

mode_t modeWithoutAccessList(int directory, mode_t mode) {
    Buffer buffer;
    const auto list = attribute(directory, XATTR_NAME_POSIX_ACL_ACCESS, buffer);
    if (list && list->empty())
        return mode;
    const auto rights = list ? rightsOfOwnGroup(*list) : std::nullopt;
    return mode & ~(static_cast<mode_t>(S_IRWXG) & ~(rights.value_or(mode & S_IRWXO) << 3));
}

bool hasAccessListOfItsOwn(int directory, int other) {
    Buffer buffer, otherBuffer;
    const auto list = attribute(directory, XATTR_NAME_POSIX_ACL_ACCESS, buffer);
    return !list || (!list->empty() && list != attribute(other, XATTR_NAME_POSIX_ACL_ACCESS, otherBuffer));
}

bool givesAccessList(int directory) {
    Buffer buffer;
    const auto list = attribute(directory, XATTR_NAME_POSIX_ACL_DEFAULT, buffer);
    return list && !list->empty();
}

} // namespace veilkeep
