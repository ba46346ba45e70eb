#include "tests/app/process/ProcessWorld.h"

#include <signal.h>

#include <algorithm>

namespace veilkeep::test {
namespace {

class OwnerTest : public ProcessWorld {
protected:
    const std::string m_item = m_tree.makeFile("Docs/a.txt", "content");
};

TEST_F(OwnerTest, WatchGivesTheListAndTakesItBack) {
    const BackgroundProgram watch({bundledProgram("veilkeepctl"), "watch"});
    ASSERT_TRUE(isLogged("Watching for"));
    const std::string before = ctl({"status"}).output;
    ASSERT_TRUE(startToWindow());
    EXPECT_EQ(ctl({"add", m_item}).exitStatus, 0);
    EXPECT_EQ(end(SIGKILL), -1);
    EXPECT_TRUE(waitUntil([&] { return ctl({"hide", m_item}).exitStatus == 0; }));
    EXPECT_FALSE(exists(m_item));
    ASSERT_TRUE(startToWindow());
    EXPECT_EQ(listed(), "hidden\t" + m_item + "\n");
    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(OwnerTest, HidesFirstWhatAKilledOneLeftVisible) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"group", "add", "G"},
                                                  {"group", "autohide", "G", "on"},
                                                  {"add", "--group=G", m_item}})
        ASSERT_EQ(ctl(words).exitStatus, 0) << words[0];
    start(); // a progress sheet may have had the keyboard
    ASSERT_TRUE(waitUntil([this] { return windowCount() > 0; }));
    EXPECT_EQ(ctl({"autohide"}).exitStatus, 0);
    EXPECT_FALSE(exists(m_item));
    EXPECT_EQ(ctl({"autounhide"}).exitStatus, 0);
    EXPECT_EQ(end(SIGKILL), -1);
    ASSERT_TRUE(exists(m_item));
    setPassword(); // or it would show them again
    start();
    EXPECT_TRUE(waitUntil([this] { return !exists(m_item); }));
    EXPECT_TRUE(m_screen.waitForDialog()) << "the password is asked for";
    EXPECT_EQ(end(SIGTERM), 0) << "also while it starts";
}

// The worker asks by a third process while the application waits for it.
TEST_F(OwnerTest, TheWorkersQuestionReplacesByWayOfTheTrash) {
    ASSERT_EQ(ctl({"hide", m_item}).exitStatus, 0);
    writeFile(m_item, "in the way");
    ASSERT_TRUE(startToWindow());
    const auto asks = [this] {
        const auto all = m_screen.windows();
        return std::ranges::any_of(all, [this](const Screen::Window& each) {
            return each.process != 0 && each.process != process() && m_screen.hasKeyboard(each);
        });
    };
    // Not while it still looks for its items.
    EXPECT_TRUE(waitUntil([&] {
        m_screen.key("Control_L+Shift_L+Left");
        return waitUntil(asks, std::chrono::seconds(3));
    }));
    m_screen.key("Alt_L+r");
    m_screen.key("Return");
    EXPECT_TRUE(waitUntil([this] { return exists(m_item) && readFile(m_item) == "content"; }));
    EXPECT_EQ(readFile(m_tree.path("home/.local/share/Trash/files/a.txt")), "in the way");
    EXPECT_TRUE(becomesListed("visible\t" + m_item));
}

} // namespace
} // namespace veilkeep::test
