#include "platform/linux/ProcessSoundPlayer.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <signal.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace veilkeep {
namespace {

struct Played {
    pid_t process = 0;
    std::string what;
};

bool isThere(const Played& played) {
    return ::kill(played.process, 0) == 0;
}

// By players that note what they play, and play it for ever.
TEST(ProcessSoundPlayerTest, PlaysEachFileOnceAtATime) {
    const test::ScratchTree tree;
    const std::string path = std::getenv("PATH"), notes = tree.makeFile("played");
    for (const std::string player : {"pw-play", "paplay"})
        tree.makeFile("bin/" + player,
                      "#!/bin/sh\necho $$ " + player + " \"$@\" >> " + notes +
                          "\nexec /usr/bin/tail -f /dev/null\n",
                      0755);
    ::setenv("PATH", tree.path("bin").c_str(), 1);
    std::vector<Played> played;
    const auto waitForPlayed = [&](std::size_t count) {
        return test::waitUntil([&] {
            std::istringstream lines(test::readFile(notes));
            played.clear();
            for (Played one; lines >> one.process && std::getline(lines >> std::ws, one.what);)
                played.push_back(one);
            return played.size() == count;
        });
    };
    std::optional<ProcessSoundPlayer> player(std::in_place);
    player->play("/a b.aiff");
    ASSERT_TRUE(waitForPlayed(1));
    EXPECT_EQ(played[0].what, "pw-play /a b.aiff");
    player->play("/a b.aiff");
    EXPECT_FALSE(isThere(played[0]));
    ASSERT_TRUE(waitForPlayed(2));
    player->play("/c.aiff");
    ASSERT_TRUE(waitForPlayed(3));
    EXPECT_TRUE(isThere(played[1]));
    player.reset();
    EXPECT_FALSE(isThere(played[1]) || isThere(played[2]));
    ::setenv("PATH", path.c_str(), 1);
}

} // namespace
} // namespace veilkeep
