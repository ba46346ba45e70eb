#include "worker/traces/ActivityStatistics.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/SilentSocket.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace veilkeep::test {
namespace {

TEST(ActivityStatistics, TheRunningManagerIsToldOfItemsAndWhatLiesBelow) {
    const ScratchTree tree;
    const PrivateBus bus(tree, PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    const std::string address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    tree.makeFile("d/.SYS_INDEX/b*a\\_%'", "");
    tree.makeDirectory("d/.SYS_INDEX/rid");
    tree.makeFile("d/.SYS_INDEX/\xff", "");
    const TracedItems items({tree.path("d/'%_\\a*b"), tree.path("d/dir"), tree.path("d/\xff")});
    EXPECT_TRUE(removeActivityStatistics(address, items)); // nobody there, nobody started

    const BusService manager(
        QStringLiteral("org.kde.ActivityManager"),
        [](const QDBusMessage& call) { return call.createReply(); }, QDBusConnection::SessionBus);
    EXPECT_TRUE(removeActivityStatistics(address, items));
    QStringList told;
    for (const QDBusMessage& call : manager.calls("DeleteStatsForResource")) {
        EXPECT_EQ(call.path(), "/ActivityManager/Resources/Scoring");
        EXPECT_EQ(call.interface(), "org.kde.ActivityManager.ResourcesScoring");
        told.append(QVariant(call.arguments()).toStringList().join(' '));
    }
    const QString d = ":any :any " + QString::fromStdString(tree.path("d/"));
    EXPECT_EQ(told, QStringList({d + "'%_\\\\a\\*b", d + "dir", d + "dir/*"}));
}

TEST(ActivityStatistics, ABusThatNeverAnswersIsGivenUp) {
    const ScratchTree tree;
    const std::string socket = tree.path("silent");
    const UniqueFd silent = listenAt(socket);
    ASSERT_TRUE(silent);
    const TracedItems items({"/a"});
    EXPECT_TRUE(removeActivityStatistics("unix:path=" + socket, items, std::chrono::milliseconds(20)));
    EXPECT_TRUE(removeActivityStatistics("unix:path=" + tree.path("missing"), items));
    EXPECT_TRUE(removeActivityStatistics("", items));
}

} // namespace
} // namespace veilkeep::test
