#include "session/ProcessInfo.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/environment/InstallationPlaces.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/BundleInfo.h"
#include "format/SystemVersion.h"

#include <unistd.h>

#include <algorithm>
#include <iterator>

namespace veilkeep {
namespace {

// They start what the user wants at login, and sessions of the former time, but nothing from menus.
constexpr std::string_view sessionManagers[] = {
    "gnome-session-binary", "gnome-session-service",
    "mate-session",         "cinnamon-session-binary",
    "cinnamon-session",     "xfce4-session",
    "lxqt-session",         "lxsession",
    "plasma_session",       "ksmserver",
    "budgie-session",
};

bool isSessionManager(const ProcessStatus& process) {
    constexpr std::size_t longestName = 15;
    const std::string_view program = lastPathComponent(process.program);
    return std::ranges::any_of(sessionManagers, [&](std::string_view name) {
        return program.empty() ? process.name == name.substr(0, longestName) : program == name;
    });
}

// The unit that systemd made of our autostart entry; that of another program may start ours for its own ends.
// What our program starts lies in it as well, but has another parent.
bool isAutostartUnit(std::string_view controlGroup) {
    return lastPathComponent(controlGroup) == "app-com.ostrel.Veilkeep@autostart.service";
}

} // namespace

std::optional<ProcessStatus> ProcessInfo::processInformation() {
    return ProcessStatus::of(::getpid());
}

std::optional<ProcessStatus> ProcessInfo::parentProcessInformation() {
    return ProcessStatus::of(::getppid());
}

bool ProcessInfo::wasLaunchedAtLogin() {
    const auto process = processInformation();
    const auto parent = parentProcessInformation();
    return process && parent && isLaunchOfSession(*process, *parent);
}

bool ProcessInfo::isLaunchOfSession(const ProcessStatus& process, const ProcessStatus& parent) {
    return isSessionManager(parent) || (parent.name == "systemd" && isAutostartUnit(process.controlGroup));
}

bool ProcessInfo::appIsRunningFromAppsFolder() {
    return isInAppsFolder(applicationBundlePath());
}

bool ProcessInfo::isInAppsFolder(const std::string& bundle) {
    LinkResolver links;
    const std::string ofUser = InstallationPlaces::ofUser().programs;
    const std::string& resolved = links.resolved(cleanPath(bundle));
    return resolved.starts_with(links.resolved(InstallationPlaces::ofSystem)) ||
           (!ofUser.empty() && resolved.starts_with(links.resolved(ofUser)));
}

QString ProcessInfo::applicationName() {
    return QString::fromStdString(BundleInfo::main().executable());
}

QString ProcessInfo::applicationIdentifier() {
    return QString::fromStdString(BundleInfo::main().identifier());
}

QString ProcessInfo::applicationVersion() {
    return QString::fromStdString(BundleInfo::main().longVersion());
}

QString ProcessInfo::osVersion() {
    return veilkeep::osVersion();
}

} // namespace veilkeep
