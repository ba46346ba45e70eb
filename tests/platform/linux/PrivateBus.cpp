#include "tests/platform/linux/PrivateBus.h"

#include <unistd.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

std::string address() {
    return "unix:abstract=veilkeep-test-" + std::to_string(::getpid());
}

std::string configuration(const ScratchTree& tree) {
    return tree.makeFile("bus.conf",
                         "<busconfig><type>custom</type><listen>" + address() +
                             "</listen><policy context='default'><allow user='*'/><allow own='*'/>"
                             "<allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>");
}

} // namespace

PrivateBus::PrivateBus(const ScratchTree& tree, Place place)
    : m_daemon(
          {"/usr/bin/dbus-daemon", "--nofork", "--print-address", "--config-file=" + configuration(tree)}) {
    useItsAddress(place);
    if (m_daemon.readLine().empty())
        m_whyMissing = "dbus-daemon cannot be started here";
}

void PrivateBus::useItsAddress(Place place) {
    ::setenv(place == Place::System ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS",
             address().c_str(), 1);
}

} // namespace veilkeep::test
