#pragma once

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"

#include <string>

namespace veilkeep::test {

// A message bus of the test's own in the place of the system's or the user's, where everybody may do
// everything and nothing is started on demand but what a test gives a directory of service files for. All
// that a process makes for one place, one after the other, have the same address, for the bus library
// remembers the first; tests that run at the same time have others.
class PrivateBus {
public:
    enum class Place { System, Session };

    explicit PrivateBus(const ScratchTree& tree, Place place = Place::System,
                        const std::string& services = {});

    static void useItsAddress(Place place = Place::System); // also while there is no such bus

    // Why there is none, empty where there is.
    const std::string& whyMissing() const { return m_whyMissing; }

private:
    BackgroundProgram m_daemon;
    std::string m_whyMissing;
};

} // namespace veilkeep::test
