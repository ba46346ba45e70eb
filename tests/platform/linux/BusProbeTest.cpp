#include "platform/linux/BusProbe.h"

#include "core/environment/SessionBus.h"
#include "tests/support/SilentSocket.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(BusProbe, TellsABusFromWhatOnlyListens) {
    const test::ScratchTree tree;
    const test::PrivateBus bus(tree, test::PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    const UniqueFd listening = test::listenAt(tree.path("a socket"));
    ASSERT_TRUE(listening);
    const std::string silent = "unix:guid=1,path=" + tree.path("a%20socket");
    const struct {
        std::string address;
        bool answers;
    } rows[] = {
        {sessionBusAddress(), true},
        {silent, false},
        {silent + ";" + sessionBusAddress(), false},
        {"unix:path=" + tree.path("nothing"), false},
        {"unixexec:path=/bin/true", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(answersAsBus(row.address, std::chrono::milliseconds(row.answers ? 5000 : 20)), row.answers)
            << row.address;
}

} // namespace
} // namespace veilkeep
