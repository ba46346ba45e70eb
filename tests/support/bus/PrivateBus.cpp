#include "tests/support/bus/PrivateBus.h"

#include <unistd.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

using Place = PrivateBus::Place;

std::string address(Place place) {
    const char* const which = place == Place::System ? "system-" : "session-";
    return std::string("unix:abstract=veilkeep-test-") + which + std::to_string(::getpid());
}

std::string configuration(const ScratchTree& tree, Place place, const std::string& services) {
    const std::string servicePlace = services.empty() ? "" : "<servicedir>" + services + "</servicedir>";
    return tree.makeFile(
        "bus.conf", "<busconfig><type>custom</type><listen>" + address(place) + "</listen>" + servicePlace +
                        "<policy context='default'><allow user='*'/><allow own='*'/>"
                        "<allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>");
}

} // namespace

PrivateBus::PrivateBus(const ScratchTree& tree, Place place, const std::string& services)
    : m_daemon({"/usr/bin/dbus-daemon", "--nofork", "--print-address",
                "--config-file=" + configuration(tree, place, services)}) {
    useItsAddress(place);
    if (m_daemon.readLine().empty())
        m_whyMissing = "dbus-daemon cannot be started here";
}

void PrivateBus::useItsAddress(Place place) {
    ::setenv(place == Place::System ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS",
             address(place).c_str(), 1);
}

} // namespace veilkeep::test
