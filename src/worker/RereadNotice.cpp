#include "worker/RereadNotice.h"

#include "core/environment/SessionBus.h"
#include "core/log/Log.h"
#include "core/process/ChildProcess.h"

#include <chrono>

namespace veilkeep {

void postRereadTempFiles() {
    if (sessionBusAddress().empty())
        return; // dbus-send would start a bus of its own
    ChildProcessOptions options;
    options.discardErrors = true;                // whether anybody listens is no concern of the user's
    options.timeLimit = std::chrono::seconds(2); // a bus that takes calls and never answers
    const ChildProcessResult result = runChildProcess(
        "/usr/bin/dbus-send",
        {"--session", "--type=signal", "/com/ostrel/Veilkeep", "com.ostrel.Veilkeep.rereadTempFiles"},
        options);
    if (!result.exitedWith(0))
        logLine("Could not post com.ostrel.Veilkeep.rereadTempFiles.");
}

} // namespace veilkeep
