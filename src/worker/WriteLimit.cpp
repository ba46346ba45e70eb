#include "worker/WriteLimit.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "worker/FileAccessAs.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::uint64_t changes =
    LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
    LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
    LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
    LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER;

// The first version lets nothing be renamed into another directory.
bool kernelCanLimit() {
    constexpr long firstWithRenames = 2;
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) >=
           firstWithRenames;
}

bool allow(const UniqueFd& rules, int below, std::uint64_t access) {
    const landlock_path_beneath_attr rule = {access, below};
    return ::syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
}

// With the user's rights, since the path may be an attack; what is not his is not opened to anybody. Of a
// directory that is still to be made it is the nearest one above.
UniqueFd openUsersDirectory(const std::string& path, const User& user) {
    const FileAccessAs access(user.id, user.group, FileAccessAs::Rights::OfThatUser);
    UniqueFd directory;
    for (const std::string_view component : pathComponents(path)) {
        const std::string name(component); // of the first one "/"
        UniqueFd next(::openat(directory.get(), name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!next)
            break;
        directory = std::move(next);
    }
    struct stat status = {};
    if (directory && (::fstat(directory.get(), &status) != 0 || status.st_uid != user.id))
        directory.reset();
    return directory;
}

} // namespace

void limitWrites(int itemDirectory, const User& askedBy, const std::string& inProgressFolder) {
    if (!kernelCanLimit())
        return;
    const landlock_ruleset_attr limited = {changes};
    const UniqueFd rules(static_cast<int>(
        ::syscall(SYS_landlock_create_ruleset, &limited, sizeof limited.handled_access_fs, 0)));
    if (!rules || !allow(rules, itemDirectory, changes))
        return;
    for (const std::string& path : {askedBy.home, inProgressFolder})
        if (const UniqueFd directory = openUsersDirectory(path, askedBy))
            allow(rules, directory.get(), changes);
    // For programs that are started. Where it cannot be opened they cannot be either.
    if (const UniqueFd null{::open("/dev/null", O_PATH | O_CLOEXEC)})
        allow(rules, null.get(), LANDLOCK_ACCESS_FS_WRITE_FILE);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0)
        ::syscall(SYS_landlock_restrict_self, rules.get(), 0);
}

} // namespace veilkeep
