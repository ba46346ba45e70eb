#include "platform/linux/BusNotifications.h"

#include "tests/support/RunProgram.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <unistd.h>

#include <optional>

namespace veilkeep {
namespace {

const QString reread = QStringLiteral("com.ostrel.Veilkeep.rereadTempFiles");
const QString recents = QStringLiteral("com.ostrel.Veilkeep.ShouldCleanRecents");

void sendSignal(const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {"/usr/bin/dbus-send", "--session", "--type=signal"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    EXPECT_EQ(test::runProgram(arguments).exitStatus, 0);
}

TEST(BusNotificationsTest, HearsTheWorkerAndItselfAndNobodyElse) {
    const test::ScratchTree tree;
    std::optional<test::PrivateBus> bus(std::in_place, tree, test::PrivateBus::Place::Session);
    if (!bus->whyMissing().empty())
        GTEST_SKIP() << bus->whyMissing();
    BusNotifications notifications;
    ASSERT_TRUE(notifications.isListening());
    bus.reset();
    EXPECT_TRUE(test::turnUntil([&] { return !notifications.isListening(); }));
    bus.emplace(tree, test::PrivateBus::Place::Session);
    notifications.listen();
    ASSERT_TRUE(notifications.isListening()) << "on the bus that came";
    QStringList heard;
    QObject::connect(&notifications, &DistributedNotifications::posted, &notifications,
                     [&](const QString& name, const QString& object) { heard << name + "=" + object; });

    // dbus-send leaves the bus at once: whose it was can no longer be told.
    sendSignal({"/com/ostrel/Veilkeep", "com.ostrel.Veilkeep.rereadTempFiles"});
    sendSignal({"/com/ostrel/Veilkeep", "com.ostrel.Veilkeep.ShouldCleanRecents", "string:No"});
    sendSignal({"/com/ostrel/Other", "com.ostrel.Veilkeep.rereadTempFiles"});
    std::optional<BusNotifications> stranger;
    if (test::isRoot()) {
        ASSERT_EQ(::seteuid(test::ordinaryUser), 0);
        stranger.emplace();
        ASSERT_EQ(::seteuid(0), 0);
        EXPECT_TRUE(stranger->post(recents, "no"));
    }
    EXPECT_FALSE(notifications.post("org.example.Other", {}));
    EXPECT_TRUE(notifications.post(recents, "Yes"));
    EXPECT_TRUE(test::turnUntil([&] { return heard.contains(recents + "=Yes"); }));
    EXPECT_EQ(heard, (QStringList{reread + "=", recents + "=Yes"}));
}

} // namespace
} // namespace veilkeep
