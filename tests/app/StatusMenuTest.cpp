#include "tests/app/AppWorld.h"
#include "tests/platform/linux/FakeTray.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>

namespace veilkeep::test {
namespace {

class StatusMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!bus.whyMissing().empty())
            GTEST_SKIP() << bus.whyMissing();
        world.emplace();
    }

    bool startWithTray() {
        tray.emplace();
        return world->start() && isIconThere();
    }
    bool isIconThere() {
        return eventually([this] { return world->app().hasStatusBarItem() && tray->items().size() == 1; });
    }

    PrivateBus bus{appScratch(), PrivateBus::Place::Session};
    std::optional<FakeTray> tray;
    std::optional<AppWorld> world;
};

TEST_F(StatusMenuTest, HidesAndShowsAGroupAndOutlivesItsHost) {
    ASSERT_TRUE(startWithTray());
    const std::string path = world->addFileToGroup("letter", "Private Files"),
                      other = world->addFile("other");
    ASSERT_TRUE(tray->choose({"Groups", "Private Files", "Hide"}));
    EXPECT_TRUE(world->isHidden(path));
    EXPECT_TRUE(exists(other));

    tray->stop();
    EXPECT_TRUE(eventually([this] { return !world->app().hasStatusBarItem(); }));
    tray->start();
    ASSERT_TRUE(isIconThere());
    ASSERT_TRUE(tray->choose({"Groups", "Private Files", "Show"}));
    EXPECT_TRUE(world->isShown(path));
    world->groups().addGroup();
    EXPECT_TRUE(eventually([this] { return tray->choose({"Groups", "New Group", "Hide"}); }));
}

TEST_F(StatusMenuTest, ShowsTheWindowAfterThePassword) {
    ASSERT_TRUE(startWithTray());
    realInput::key("Ctrl+W");
    EXPECT_TRUE(eventually([this] { return !world->parts().window.isVisible(); }));
    tray->click();
    EXPECT_TRUE(eventually([this] { return world->parts().window.isVisible(); }));
    ASSERT_TRUE(world->giveKeyboard());

    AppWorld::setPassword("secret");
    realInput::key("Ctrl+W");
    EXPECT_TRUE(eventually([this] { return !world->parts().window.isVisible(); }));
    world->whenOpen("Enter your Veilkeep password:", [this](QWidget&) {
        EXPECT_FALSE(world->parts().window.isVisible());
        realInput::type("secret");
        realInput::key("Return");
    });
    ASSERT_TRUE(tray->choose({"Show Veilkeep…"}));
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_TRUE(eventually([this] { return world->parts().window.isVisible(); }));
}

TEST_F(StatusMenuTest, WithoutATrayClosingTheWindowTellsOnceThatTheProgramGoesOn) {
    ASSERT_TRUE(world->start());
    constexpr const char* goesOn = "Veilkeep goes on without a window.";
    world->answer(goesOn, "OK");
    realInput::key("Ctrl+W");
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_FALSE(world->parts().window.isVisible());

    world->app().showVeilkeep();
    ASSERT_TRUE(world->giveKeyboard());
    realInput::key("Ctrl+W");
    EXPECT_TRUE(eventually([this] { return !world->parts().window.isVisible(); }));
    settle();
    EXPECT_FALSE(world->openDialog(goesOn));
}

} // namespace
} // namespace veilkeep::test
