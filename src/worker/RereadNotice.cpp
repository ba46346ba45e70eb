#include "worker/RereadNotice.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/process/ChildProcess.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>

namespace veilkeep {
namespace {

// Without one dbus-send would start a bus of its own.
bool sessionBusIsThere() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address)
        return true;
    const std::string runtime = XdgDirectories::current().runtimeDir;
    return !runtime.empty() && ::access(joinPath(runtime, "bus").c_str(), F_OK) == 0;
}

} // namespace

void postRereadTempFiles() {
    if (!sessionBusIsThere())
        return;
    ChildProcessOptions options;
    options.timeLimit = std::chrono::seconds(2); // a bus that takes calls and never answers
    const ChildProcessResult result = runChildProcess(
        "/usr/bin/dbus-send",
        {"--session", "--type=signal", "/com/ostrel/Veilkeep", "com.ostrel.Veilkeep.rereadTempFiles"},
        options);
    if (!result.exitedWith(0))
        logLine("Could not post com.ostrel.Veilkeep.rereadTempFiles.");
}

} // namespace veilkeep
