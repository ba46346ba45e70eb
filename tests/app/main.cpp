// The main() of tests that start the desktop application within themselves: a display and a home, no message
// bus but those that a test starts, and no application object yet.

#include "tests/app/AppWorld.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

using namespace veilkeep::test;

const ScratchTree* scratchOfThisProcess = nullptr;

class NeedsDisplay : public ::testing::Environment {
public:
    explicit NeedsDisplay(std::string trouble) : m_trouble(std::move(trouble)) {}

    void SetUp() override {
        if (!m_trouble.empty())
            GTEST_SKIP() << m_trouble;
    }

private:
    std::string m_trouble;
};

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
