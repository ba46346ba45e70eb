#include "platform/linux/BusProbe.h"

#include "core/base/UniqueFd.h"
#include "core/environment/SessionBus.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>

namespace veilkeep {
namespace {

TEST(BusProbe, TellsABusFromWhatOnlyListens) {
    const test::ScratchTree tree;
    const test::PrivateBus bus(tree, test::PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    sockaddr_un place = {AF_UNIX, {}};
    const std::string socket = tree.path("a socket");
    ASSERT_LT(socket.copy(place.sun_path, sizeof place.sun_path - 1), sizeof place.sun_path - 1);
    const UniqueFd listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(listening.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(::listen(listening.get(), 1), 0);
    const std::string silent = "unix:guid=1,path=" + tree.path("a%20socket");
    struct Row {
        std::string address;
        bool answers;
    };
    const Row rows[] = {
        {sessionBusAddress(), true},
        {silent, false},
        {silent + ";" + sessionBusAddress(), false},
        {"unix:path=" + tree.path("nothing"), false},
        {"unixexec:path=/bin/true", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(answersAsBus(row.address, std::chrono::milliseconds(row.answers ? 5000 : 20)), row.answers)
            << row.address;
}

} // namespace
} // namespace veilkeep
