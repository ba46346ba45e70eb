#include "core/environment/SessionBus.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"

#include <unistd.h>

#include <cstdlib>

namespace veilkeep {

std::string sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address)
        return address;
    const std::string runtime = XdgDirectories::current().runtimeDir;
    const std::string socket = joinPath(runtime, "bus");
    return !runtime.empty() && ::access(socket.c_str(), F_OK) == 0 ? "unix:path=" + socket : std::string();
}

} // namespace veilkeep
