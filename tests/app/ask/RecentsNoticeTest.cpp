#include "app/ask/RecentsNotice.h"

#include "tests/app/ask/SignalListener.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QThread>

#include <memory>

namespace veilkeep::test {
namespace {

TEST(RecentsNotice, StaysUntilABusyApplicationHasSeenIt) {
    const ScratchTree tree;
    const PrivateBus bus(tree, PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    SessionBusConnection application;
    SignalListener listener;
    ASSERT_TRUE(application.connection().registerObject("/com/ostrel/Veilkeep/Requests", &listener,
                                                        QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(application.connection().registerService("com.ostrel.Veilkeep.Requests"));
    ASSERT_TRUE(application.connection().connect({}, "/com/ostrel/Veilkeep", "com.ostrel.Veilkeep",
                                                 "ShouldCleanRecents", &listener,
                                                 SLOT(received(QDBusMessage))));
    const std::unique_ptr<QThread> asking(QThread::create([] {
        RecentsNotice notice;
        EXPECT_TRUE(notice.post("No"));
        notice.stay(std::chrono::milliseconds(0));
    }));
    asking->start();
    EXPECT_FALSE(asking->wait(500)) << "the application has looked at nothing yet";
    EXPECT_TRUE(eventually([&] { return asking->isFinished(); }));
    ASSERT_EQ(listener.heard.size(), 1U);
    EXPECT_EQ(listener.heard.front().arguments(), QVariantList{"No"});
}

TEST(RecentsNotice, PostsNothingWithoutABus) {
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    EXPECT_FALSE(RecentsNotice().post("Yes"));
}

} // namespace
} // namespace veilkeep::test
