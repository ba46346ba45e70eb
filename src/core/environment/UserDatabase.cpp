#include "core/environment/UserDatabase.h"

#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/process/ChildProcess.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <memory>
#include <utility>

namespace veilkeep {
namespace {

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};

std::string homeIfAbsolute(std::string_view home) {
    return home.starts_with('/') ? cleanPath(home) : std::string();
}

// Calls with each entry of the local file until a call answers true.
template <class Call>
void forEachLocalUser(Call call) {
    const std::unique_ptr<FILE, CloseFile> file(std::fopen("/etc/passwd", "re"));
    std::array<char, 4096> buffer;
    passwd entry = {};
    passwd* found = nullptr;
    while (file && ::fgetpwent_r(file.get(), &entry, buffer.data(), buffer.size(), &found) == 0)
        if (call(User{entry.pw_uid, entry.pw_gid, homeIfAbsolute(entry.pw_dir ? entry.pw_dir : "")}))
            return;
}

std::optional<User> userInLocalFile(unsigned int uid) {
    std::optional<User> found;
    forEachLocalUser([&](User user) {
        if (user.id == uid)
            found = std::move(user);
        return found.has_value();
    });
    return found;
}

// NAME:PASSWORD:UID:GID:COMMENT:HOME:SHELL
std::optional<User> userInEntry(std::string_view entry) {
    std::array<std::string_view, 7> fields;
    std::string_view line = takeUntil('\n', entry);
    for (std::string_view& field : fields)
        field = takeUntil(':', line);
    const auto id = userIdFromText(fields[2]), group = userIdFromText(fields[3]);
    if (!id || !group)
        return std::nullopt;
    return User{*id, *group, homeIfAbsolute(fields[5])};
}

// Users from elsewhere (a directory server) are known to the name services, whose modules only a program that
// is linked dynamically can load.
std::optional<User> userFromNameServices(unsigned int uid) {
    ChildProcessOptions options;
    options.inheritEnvironment = ::geteuid() != 0; // as root no stranger's settings
    const ChildProcessResult run =
        runChildProcess("/usr/bin/getent", {"passwd", std::to_string(uid)}, options);
    std::optional<User> user = run.exitedWith(0) ? userInEntry(run.output) : std::nullopt;
    return user && user->id == uid ? user : std::nullopt;
}

} // namespace

std::optional<unsigned int> userIdFromText(std::string_view text) {
    constexpr unsigned int nobodysId = ~0U; // which the system takes for "unchanged"
    unsigned int id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    const bool isClean = error == std::errc() && text == std::to_string(id);
    return isClean && id != nobodysId ? std::optional(id) : std::nullopt;
}

std::optional<User> userInDatabase(unsigned int uid) {
    std::optional<User> local = userInLocalFile(uid);
    if (local && !local->home.empty())
        return local;
    std::optional<User> other = userFromNameServices(uid);
    return other ? other : local;
}

std::string homeInUserDatabase(unsigned int uid) {
    return userInDatabase(uid).value_or(User()).home;
}

std::vector<std::string> homesInLocalFile() {
    std::vector<std::string> homes;
    forEachLocalUser([&](User user) {
        if (!user.home.empty())
            homes.push_back(std::move(user.home));
        return false;
    });
    return homes;
}

} // namespace veilkeep
