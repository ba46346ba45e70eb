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

// Players that note what they play, and play it for ever.
class ProcessSoundPlayerTest : public ::testing::Test {
protected:
    void install(const std::string& player) {
        m_tree.makeFile("bin/" + player,
                        "#!/bin/sh\necho $$ " + player + " \"$@\" >> " + m_tree.path("played") +
                            "\nexec /usr/bin/tail -f /dev/null\n",
                        0755);
    }

    struct Played {
        pid_t process = 0;
        std::string what;
    };
    std::vector<Played> played() const {
        std::vector<Played> all;
        std::istringstream lines(test::exists(m_tree.path("played")) ? test::readFile(m_tree.path("played"))
                                                                     : std::string());
        Played one;
        while (lines >> one.process && std::getline(lines >> std::ws, one.what))
            all.push_back(one);
        return all;
    }
    bool waitForPlayed(std::size_t count) const {
        return test::waitUntil([&] { return played().size() == count; });
    }
    static bool isThere(const Played& played) { return ::kill(played.process, 0) == 0; }

    const test::ScratchTree m_tree;
    const std::string m_path = std::getenv("PATH");
    const int m_isPathSet = ::setenv("PATH", m_tree.makeDirectory("bin").c_str(), 1);
    std::optional<ProcessSoundPlayer> m_player{std::in_place};

    void TearDown() override { ::setenv("PATH", m_path.c_str(), 1); }
};

TEST_F(ProcessSoundPlayerTest, PlaysEachFileOnceAtATime) {
    install("pw-play");
    install("paplay");
    m_player->play("/a b.aiff");
    ASSERT_TRUE(waitForPlayed(1));
    EXPECT_EQ(played()[0].what, "pw-play /a b.aiff");
    m_player->play("/a b.aiff");
    EXPECT_FALSE(isThere(played()[0]));
    ASSERT_TRUE(waitForPlayed(2));
    m_player->play("/c.aiff");
    ASSERT_TRUE(waitForPlayed(3));
    EXPECT_TRUE(isThere(played()[1]));
    m_player.reset();
    EXPECT_FALSE(isThere(played()[1]));
    EXPECT_FALSE(isThere(played()[2]));
}

} // namespace
} // namespace veilkeep
