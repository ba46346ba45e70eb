#include "platform/linux/gui/LogoutEvents.h"

#include "tests/support/BackgroundProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

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
    constexpr const char* server = "/usr/bin/Xvfb";
    if (!test::exists(server))
        GTEST_SKIP() << server << " is missing";
    const test::ScratchTree tree;
    test::BackgroundProgram screen({server, "-displayfd", "1", "-nolisten", "tcp"});
    test::BackgroundProgram manager({VEILKEEP_SESSION_MANAGER});
    ::setenv("DISPLAY", (":" + screen.readLine()).c_str(), 1);
    ::setenv("SESSION_MANAGER", manager.readLine().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    QGuiApplication application(count, arguments);
    NoEvents events;
    const LogoutEvents logout(application, events);
    std::vector<Ending> told;
    QObject::connect(&events, &SessionEvents::endRequested, [&](Ending ending) { told.push_back(ending); });

    EXPECT_TRUE(test::waitUntil([&] {
        QCoreApplication::processEvents();
        return !told.empty();
    }));
    EXPECT_EQ(manager.readLine(), "saved") << "neither asked nor cancelled";
    EXPECT_EQ(told, std::vector{Ending::Logout});
}

} // namespace
} // namespace veilkeep
