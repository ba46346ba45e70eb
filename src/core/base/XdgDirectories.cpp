#include "core/base/XdgDirectories.h"

#include "core/base/PathText.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace veilkeep {
namespace {

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};

std::optional<unsigned int> askingUserOfRoot() {
    if (::geteuid() != 0)
        return std::nullopt;
    const std::string_view text = environment("PKEXEC_UID");
    unsigned int uid = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), uid);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return uid;
}

std::string homeOf(const passwd& entry) {
    return entry.pw_dir && entry.pw_dir[0] == '/' ? cleanPath(entry.pw_dir) : std::string();
}

// The name services take ten times as long to load as this file takes to read, and most users are in it.
std::string homeInLocalFile(unsigned int uid) {
    const std::unique_ptr<FILE, CloseFile> file(std::fopen("/etc/passwd", "re"));
    std::array<char, 4096> buffer;
    passwd entry = {};
    passwd* found = nullptr;
    while (file && ::fgetpwent_r(file.get(), &entry, buffer.data(), buffer.size(), &found) == 0)
        if (entry.pw_uid == uid)
            return homeOf(entry);
    return {};
}

std::string homeFromNameServices(unsigned int uid) {
    std::vector<char> buffer(1024);
    passwd entry = {};
    passwd* found = nullptr;
    int status = 0;
    while ((status = ::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found)) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return status == 0 && found ? homeOf(entry) : std::string();
}

} // namespace

std::string homeInUserDatabase(unsigned int uid) {
    std::string home = homeInLocalFile(uid);
    return home.empty() ? homeFromNameServices(uid) : home;
}

unsigned int actingUserId() {
    return askingUserOfRoot().value_or(::geteuid());
}

std::string homeDirectory() {
    if (const auto uid = askingUserOfRoot())
        return homeInUserDatabase(*uid);
    const std::string_view home = environment("HOME");
    return home.starts_with('/') ? cleanPath(home) : homeInUserDatabase(::geteuid());
}

XdgDirectories XdgDirectories::current() {
    const bool forAnotherUser = askingUserOfRoot().has_value();
    const std::string home = homeDirectory();
    const auto directory = [&](const char* variable, std::string_view belowHome) -> std::string {
        const std::string_view value = forAnotherUser ? std::string_view() : environment(variable);
        if (value.starts_with('/'))
            return cleanPath(value);
        return belowHome.empty() || home.empty() ? std::string() : joinPath(home, belowHome);
    };
    return {directory("XDG_DATA_HOME", ".local/share"), directory("XDG_CONFIG_HOME", ".config"),
            directory("XDG_STATE_HOME", ".local/state"), directory("XDG_CACHE_HOME", ".cache"),
            directory("XDG_RUNTIME_DIR", "")};
}

OwnPlaces OwnPlaces::current() {
    return in(XdgDirectories::current());
}

OwnPlaces OwnPlaces::in(const XdgDirectories& directories) {
    const std::string data = joinPath(directories.dataHome, "Veilkeep");
    return {data, joinPath(data, "InProgress"), joinPath(directories.configHome, "com.ostrel.Veilkeep.plist"),
            joinPath(directories.stateHome, "Veilkeep")};
}

} // namespace veilkeep
