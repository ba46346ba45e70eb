#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/environment/ProcessStatus.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/protocol/TrustedProgram.h"
#include "core/storage/DefaultsKeys.h"
#include "core/storage/UserDefaults.h"
#include "platform/linux/checkup/ProgramCheckup.h"

#include <QString>

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace veilkeep {
namespace {

// Programs that ask for administrator rights, each for its desktop; polkit itself does not tell who does.
constexpr std::string_view agents[] = {
    "gnome-shell",
    "polkit-gnome-authentication-agent-1",
    "polkit-kde-authentication-agent-1",
    "polkit-mate-authentication-agent-1",
    "lxqt-policykit-agent",
    "lxpolkit",
    "xfce-polkit",
    "phosh",
    "hyprpolkitagent",
};

std::string_view agentNamed(std::string_view program) {
    const auto found = std::ranges::find(agents, program);
    return found == std::ranges::end(agents) ? std::string_view() : *found;
}

// By its file, else by the name that it gave itself, of which the system keeps 15 bytes.
std::string_view agentOf(const ProcessStatus& process) {
    constexpr std::size_t longestName = 15;
    if (const auto agent = agentNamed(lastPathComponent(process.program)); !agent.empty())
        return agent;
    const auto found = std::ranges::find_if(
        agents, [&](std::string_view agent) { return agent.substr(0, longestName) == process.name; });
    return found == std::ranges::end(agents) ? std::string_view() : *found;
}

std::string runningAgent() {
    for (const std::string& name : entryNamesIn("/proc")) {
        pid_t id = 0;
        const char* const end = name.data() + name.size();
        if (std::from_chars(name.data(), end, id).ptr != end)
            continue;
        const auto process = ProcessStatus::of(id);
        if (process && process->user == ::getuid())
            if (const std::string_view agent = agentOf(*process); !agent.empty())
                return std::string(agent);
    }
    return {};
}

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value;
}

} // namespace

RightsFacts lookAtRights(const std::string& bundle) {
    RightsFacts facts;
    facts.areWanted = UserDefaults().boolean(defaultsKey::allowPrivilidgedFiles).value_or(false);
    facts.isPkexecThere = ::access("/usr/bin/pkexec", X_OK) == 0; // where SecurityController runs it
    facts.isPolicyThere = itemExistsAt("/usr/share/polkit-1/actions/com.ostrel.Veilkeep.policy");
    facts.agent = runningAgent();
    if (const auto trusted = checkTrustedProgram(bundledProgramPath(bundle, "cloakWorker")); !trusted)
        facts.workerFault = trusted.error();
    return facts;
}

SurroundingsFacts lookAtSurroundings() {
    SurroundingsFacts facts;
    for (const QString& desktop :
         qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts))
        facts.desktops.push_back(desktop.toStdString());
    facts.isWayland = isSet("WAYLAND_DISPLAY");
    facts.hasDisplay = facts.isWayland || isSet("DISPLAY");
    facts.isRemote = isSet("SSH_CONNECTION");
    facts.isContainer = isSet("container") || itemExistsAt("/run/systemd/container") ||
                        itemExistsAt("/.dockerenv") || itemExistsAt("/run/.containerenv");
    facts.isRoot = ::geteuid() == 0;
    return facts;
}

} // namespace veilkeep
