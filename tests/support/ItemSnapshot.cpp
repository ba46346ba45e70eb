#include "tests/support/ItemSnapshot.h"

#include "core/base/PathText.h"
#include "tests/support/ScratchTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace veilkeep::test {
namespace {

std::int64_t nanoseconds(const statx_timestamp& time) {
    return time.tv_sec * 1'000'000'000 + static_cast<std::int64_t>(time.tv_nsec);
}

std::map<std::string, std::string> attributesOf(const std::string& path) {
    char names[4096], value[4096];
    const ssize_t length = ::llistxattr(path.c_str(), names, sizeof names);
    std::map<std::string, std::string> attributes;
    for (const char* name = names; length > 0 && name < names + length; name += std::strlen(name) + 1) {
        const ssize_t size = ::lgetxattr(path.c_str(), name, value, sizeof value);
        attributes[name] = std::string(value, static_cast<std::size_t>(size < 0 ? 0 : size));
    }
    return attributes;
}

std::string linkTarget(const std::string& path) {
    char target[4096];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    return std::string(target, static_cast<std::size_t>(length < 0 ? 0 : length));
}

ItemState stateOf(const std::string& path) {
    struct statx status = {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        throw std::system_error(errno, std::generic_category(), path);
    ItemState state{status.stx_ino,
                    status.stx_mode,
                    status.stx_uid,
                    status.stx_gid,
                    nanoseconds(status.stx_mtime),
                    nanoseconds(status.stx_btime),
                    {},
                    attributesOf(path)};
    if (S_ISREG(status.stx_mode))
        state.content = readFile(path);
    if (S_ISLNK(status.stx_mode))
        state.content = linkTarget(path);
    return state;
}

void addBelow(std::map<std::string, ItemState>& states, const std::string& path,
              const std::string& relative) {
    states[relative] = stateOf(path);
    if (!S_ISDIR(states[relative].mode))
        return;
    for (const auto& entry : std::filesystem::directory_iterator(path))
        addBelow(states, entry.path(), joinPath(relative, entry.path().filename().native()));
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const ItemState& state) {
    return stream << "{inode " << state.inode << " mode " << std::oct << state.mode << std::dec << " owner "
                  << state.owner << ':' << state.group << " modified " << state.modified << " born "
                  << state.born << " content of " << state.content.size() << " bytes, "
                  << state.attributes.size() << " attributes}";
}

std::map<std::string, ItemState> snapshotOf(const std::string& path) {
    std::map<std::string, ItemState> states;
    addBelow(states, path, "");
    return states;
}

} // namespace veilkeep::test
