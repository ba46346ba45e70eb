#include "tests/platform/linux/PolkitWorld.h"

#include "tests/support/PrivateMount.h"
#include "tests/support/RunProgram.h"
#include "tests/support/WaitUntil.h"

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace veilkeep::test {
namespace {

constexpr const char* daemon = "/usr/bin/dbus-daemon";
constexpr const char* polkitDaemon = "/usr/lib/polkit-1/polkitd";
constexpr const char* actions = "/usr/share/polkit-1/actions";
constexpr const char* rules = "/etc/polkit-1/rules.d";

void mountOn(const std::string& place, const char* type, const std::string& options) {
    if (::mount("none", place.c_str(), type, 0, options.c_str()) != 0)
        throw PolkitWorld::NotAllowed(std::string(type) + " on " + place + ": " + std::strerror(errno));
}

// The program's folder is added to the system's, which stays as it is.
void install(const ScratchTree& tree) {
    const std::string layers = tree.makeDirectory("layers");
    mountOn(layers, "tmpfs", "mode=755");
    const std::string upper = tree.makeDirectory("layers/upper"), work = tree.makeDirectory("layers/work");
    mountOn("/usr/lib", "overlay", "lowerdir=/usr/lib,upperdir=" + upper + ",workdir=" + work);
    std::filesystem::create_directories(std::filesystem::path(PolkitWorld::worker).parent_path());
    std::filesystem::copy_file(bundledProgram("cloakWorker"), PolkitWorld::worker);
    mountOn(actions, "tmpfs", "mode=755");
    std::filesystem::copy(VEILKEEP_POLICY, actions);
}

void writeRule(const std::string& rule) {
    mountOn(rules, "tmpfs", "mode=755");
    const std::string answer =
        "polkit.addRule(function(action) { if (action.id == 'com.ostrel.Veilkeep.move') return "
        "polkit.Result." +
        rule + "; });";
    writeFile(rules + std::string("/00-test.rules"),
              "polkit.addAdminRule(function() { return ['unix-user:0']; });" +
                  (rule.empty() ? rule : answer));
}

bool polkitIsThere() {
    const ProgramRun run = runProgram(
        {"/usr/bin/dbus-send", "--system", "--print-reply", "--dest=org.freedesktop.DBus",
         "/org/freedesktop/DBus", "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.PolicyKit1"});
    return run.output.find("boolean true") != std::string::npos;
}

} // namespace

std::string PolkitWorld::whatIsMissing() {
    if (!isRoot())
        return "needs root";
    if (::prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1)
        return "nothing may gain rights here";
    for (const char* const needed : {daemon, polkitDaemon, "/usr/bin/pkexec", actions, rules})
        if (!exists(needed))
            return std::string(needed) + " is missing";
    return {};
}

PolkitWorld::PolkitWorld(const ScratchTree& tree, const std::string& rule) {
    ::umask(022);
    mountOn("/proc", "proc", {});
    install(tree);
    writeRule(rule);
    mountOn("/run", "tmpfs", "mode=755");
    std::filesystem::create_directory("/run/dbus");
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    m_bus = std::make_unique<BackgroundProgram>(std::vector<std::string>{
        daemon, "--system", "--nofork", "--nopidfile", "--nosyslog", "--print-address"});
    if (m_bus->readLine().empty())
        throw std::runtime_error("the system bus did not start");
    m_polkit = std::make_unique<BackgroundProgram>(std::vector<std::string>{polkitDaemon, "--no-debug"});
    if (!waitUntil(polkitIsThere))
        throw std::runtime_error("polkitd did not start");
}

} // namespace veilkeep::test
