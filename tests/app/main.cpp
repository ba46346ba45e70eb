// The main() of tests that start the desktop application within themselves: a display and a home, no message
// bus but those that a test starts, and no application object yet.

#include "tests/app/AppWorld.h"
#include "tests/support/gui/NeedsDisplay.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace veilkeep::test;

const ScratchTree* scratchOfThisProcess = nullptr;

} // namespace

const ScratchTree& veilkeep::test::appScratch() {
    return *scratchOfThisProcess;
}

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const ScratchTree scratch;
    scratchOfThisProcess = &scratch;
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    const VirtualDisplay display;
    ::testing::AddGlobalTestEnvironment(new NeedsDisplay(display.trouble()));
    return RUN_ALL_TESTS();
}
