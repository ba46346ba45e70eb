#include "worker/AdministratorRights.h"

#include <grp.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace veilkeep {
namespace {

constexpr const char* askingUserVariable = "PKEXEC_UID";

bool hasOnlyGroup(gid_t group) {
    gid_t real = 0, effective = 0, saved = 0, further = 0;
    return ::getresgid(&real, &effective, &saved) == 0 && real == group && effective == group &&
           saved == group && ::getgroups(1, &further) == 1 && further == group;
}

bool isOnlyUser(uid_t user) {
    uid_t real = 0, effective = 0, saved = 0;
    return ::getresuid(&real, &effective, &saved) == 0 && real == user && effective == user && saved == user;
}

bool becomeForGood(const User& user) {
    const gid_t group = user.group;
    if (::setgroups(1, &group) != 0 || ::setresgid(group, group, group) != 0 ||
        ::setresuid(user.id, user.id, user.id) != 0)
        return false;
    return hasOnlyGroup(group) && isOnlyUser(user.id) &&
           (user.id == 0 || (::setuid(0) != 0 && ::seteuid(0) != 0));
}

bool useEnvironmentOf(const User& user) {
    const std::string runtime = "/run/user/" + std::to_string(user.id);
    return ::clearenv() == 0 && ::setenv("LANG", "C.UTF-8", 1) == 0 &&
           ::setenv("PATH", "/usr/bin:/bin", 1) == 0 && ::setenv("HOME", user.home.c_str(), 1) == 0 &&
           ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1) == 0;
}

} // namespace

bool hasAdministratorRights() {
    return std::getenv(askingUserVariable) != nullptr && ::geteuid() == 0;
}

std::optional<User> userOfAdministratorRights() {
    const char* const text = std::getenv(askingUserVariable);
    const auto id = userIdFromText(text ? text : "");
    return id ? userInDatabase(*id) : std::nullopt;
}

bool giveUpAdministratorRights(const User& user) {
    return becomeForGood(user) && useEnvironmentOf(user);
}

} // namespace veilkeep
