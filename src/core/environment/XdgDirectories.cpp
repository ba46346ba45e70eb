#include "core/environment/XdgDirectories.h"

#include "core/base/PathText.h"
#include "core/environment/UserDatabase.h"

#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string_view>

namespace veilkeep {
namespace {

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}

std::optional<unsigned int> askingUserOfRoot() {
    return ::geteuid() == 0 ? userIdFromText(environment("PKEXEC_UID")) : std::nullopt;
}

} // namespace

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
    const auto below = [](const std::string& directory, std::string_view name) {
        return directory.empty() ? std::string() : joinPath(directory, name);
    };
    const std::string data = below(directories.dataHome, "Veilkeep");
    return {data, below(data, "InProgress"), below(directories.configHome, "com.ostrel.Veilkeep.plist"),
            below(directories.stateHome, "Veilkeep")};
}

} // namespace veilkeep
