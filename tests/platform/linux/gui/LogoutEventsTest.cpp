#include "platform/linux/gui/LogoutEvents.h"

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace veilkeep {
namespace {

class NoEvents : public SessionEvents {
public:
    void start() override {}
    void release() override {}
};

TEST(LogoutEventsTest, TellsOfALogoutAndLetsItGoOn) {
    const test::ScratchTree tree;
    const test::VirtualDisplay display;
    if (!display.trouble().empty())
        GTEST_SKIP() << display.trouble();
    test::BackgroundProgram manager({VEILKEEP_SESSION_MANAGER});
    ::setenv("SESSION_MANAGER", manager.readLine().c_str(), 1);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    QGuiApplication application(count, arguments);
    NoEvents events;
    const LogoutEvents logout(application, events);
    std::vector<Ending> told;
    QObject::connect(&events, &SessionEvents::endRequested, [&](Ending ending) { told.push_back(ending); });

    EXPECT_TRUE(test::turnUntil([&] { return !told.empty(); }));
    EXPECT_EQ(manager.readLine(), "saved") << "neither asked nor cancelled";
    EXPECT_EQ(told, std::vector{Ending::Logout});
}

} // namespace
} // namespace veilkeep
