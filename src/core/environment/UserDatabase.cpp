#include "core/environment/UserDatabase.h"

#include "core/base/PathText.h"
#include "core/process/ChildProcess.h"

#include <pwd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>
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
        if (call(entry.pw_uid, homeIfAbsolute(entry.pw_dir ? entry.pw_dir : "")))
            return;
}

std::string homeInLocalFile(unsigned int uid) {
    std::string homeOfUser;
    forEachLocalUser([&](unsigned int user, std::string home) {
        if (user == uid)
            homeOfUser = std::move(home);
        return user == uid;
    });
    return homeOfUser;
}

// NAME:PASSWORD:UID:GID:COMMENT:HOME:SHELL
std::string homeInEntry(std::string_view entry) {
    constexpr int fieldsBeforeHome = 5;
    for (int field = 0; field < fieldsBeforeHome; ++field) {
        const auto colon = entry.find(':');
        if (colon == std::string_view::npos)
            return {};
        entry.remove_prefix(colon + 1);
    }
    return homeIfAbsolute(entry.substr(0, entry.find_first_of(":\n")));
}

// Users from elsewhere (a directory server) are known to the name services, whose modules only a program that
// is linked dynamically can load.
std::string homeFromNameServices(unsigned int uid) {
    const ChildProcessResult run = runChildProcess("/usr/bin/getent", {"passwd", std::to_string(uid)});
    return run.exitedWith(0) ? homeInEntry(run.output) : std::string();
}

} // namespace

std::string homeInUserDatabase(unsigned int uid) {
    std::string home = homeInLocalFile(uid);
    return home.empty() ? homeFromNameServices(uid) : home;
}

std::vector<std::string> homesInLocalFile() {
    std::vector<std::string> homes;
    forEachLocalUser([&](unsigned int, std::string home) {
        if (!home.empty())
            homes.push_back(std::move(home));
        return false;
    });
    return homes;
}

} // namespace veilkeep
