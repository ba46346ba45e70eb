#include "tests/app/AppWorld.h"
#include "tests/support/bus/FakeLogind.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace veilkeep::test {
namespace {

constexpr const char* hidingFailed = "Some errors have been occured while hiding files";

// With a session of logind's around the program.
class SessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        world.emplace();
        logind.emplace("{}");
        const std::string trouble = bus.whyMissing() + logind->whyMissing();
        if (!trouble.empty())
            GTEST_SKIP() << trouble;
        logind->showSession();
    }

    bool start() {
        return world->start() && eventually([this] { return logind->inhibitors().contains("sleep"); });
    }

    bool isWindowGone() {
        return eventually([this] { return !world->parts().window.isVisible(); });
    }

    PrivateBus bus{appScratch()};
    std::optional<FakeLogind> logind;
    std::optional<AppWorld> world;
};

TEST_F(SessionTest, LockingHidesAndClosesEverythingAndUnlockingAsks) {
    AppWorld::setPassword("secret");
    const auto enterIt = [](QWidget&) {
        realInput::type("secret");
        realInput::key("Return");
    };
    world->whenOpen(AppWorld::prompt, enterIt);
    ASSERT_TRUE(start());
    const std::string path = world->addFileToGroup("diary", "AutoHide Group"),
                      other = world->addFile("other");
    const std::string byHand = world->addFile("hidden by hand");
    world->clickRow("hidden by hand", AppWorld::Part::Switch);
    EXPECT_TRUE(world->isHidden(byHand));
    world->clickRow("diary");
    realInput::key("Space");
    EXPECT_TRUE(eventually([] { return QApplication::topLevelWidgets().size() > 1; }));
    world->whenOpen("Add Items", [&](QWidget&) {
        logind->set("LockedHint", true);
        EXPECT_TRUE(isWindowGone());
    });
    realInput::key("Ctrl+O");
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_TRUE(world->isHidden(path));
    EXPECT_TRUE(exists(other));
    EXPECT_TRUE(eventually([] {
        return std::ranges::none_of(QApplication::topLevelWidgets(),
                                    [](const QWidget* widget) { return widget->isVisible(); });
    }));

    world->whenOpen(AppWorld::prompt, [&](QWidget& panel) {
        EXPECT_FALSE(world->parts().window.isVisible());
        EXPECT_TRUE(world->isHiddenOnDisk(path));
        enterIt(panel);
    });
    logind->set("LockedHint", false);
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_TRUE(world->isShown(path));
    EXPECT_TRUE(world->isHiddenOnDisk(byHand));
    EXPECT_TRUE(world->window()->isVisible());
    world->expectKeysToArrive();
}

TEST_F(SessionTest, LockingCancelsTheEditingOfAGroup) {
    ASSERT_TRUE(start());
    world->clickGroup("Private Files");
    world->whenOpen("Edit Group", [&](QWidget& sheet) {
        realInput::type("Changed");
        world->whenOpen("Choose Image", [&](QWidget&) { logind->set("LockedHint", true); });
        EXPECT_TRUE(AppWorld::clickButton(sheet, "Choose Image…"));
    });
    realInput::key("Ctrl+E");
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_TRUE(isWindowGone());
    EXPECT_TRUE(eventually([&] { return !QApplication::activeModalWidget(); }));
    EXPECT_TRUE(world->groups().ifExistsGroupWithName("Private Files"));
    logind->set("LockedHint", false);
    EXPECT_TRUE(eventually([&] { return world->parts().window.isVisible() && world->isAtRest(); }));
}

TEST_F(SessionTest, SleepWaitsUntilItemsAreHidden) {
    ASSERT_TRUE(start());
    const std::string path = world->addFileToGroup("diary", "AutoHide Group");
    logind->announce("Sleep", true);
    EXPECT_TRUE(eventually([&] { return !logind->inhibitors().contains("sleep"); }));
    EXPECT_TRUE(world->isHiddenOnDisk(path)) << "before sleep goes on";
    EXPECT_TRUE(isWindowGone());
    logind->announce("Sleep", false);
    EXPECT_TRUE(world->isShown(path));
    EXPECT_TRUE(eventually([&] { return world->window()->isVisible(); }));
}

TEST(QuitTest, HidesSavesAndEnds) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    const std::string path = world.addFileToGroup("diary", "AutoHide Group"), other = world.addFile("other");
    EXPECT_TRUE(world.quits([] { realInput::key("Ctrl+Q"); }));
    EXPECT_TRUE(world.isHiddenOnDisk(path));
    EXPECT_TRUE(exists(other));
    const std::string folder = OwnPlaces::current().dataDirectory;
    const auto stored = world.files().readFilesInfoFileAtPath(folder + "/FilesInfo.Veilkeep");
    ASSERT_TRUE(stored && stored->size() == 2);
    EXPECT_EQ((*stored)[0].state(), File::Hidden);
    EXPECT_EQ((*stored)[1].state(), File::Visible);
    EXPECT_TRUE(exists(folder + "/GroupsInfo.Veilkeep"));
}

TEST(QuitTest, AsksWhereSomethingStayedVisible) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    const std::string path = world.addFileToGroup("diary", "AutoHide Group");
    appScratch().makeDirectory("home/Docs/.SYS_INDEX");
    writeFile(AppWorld::hiddenPathOf(path), "in the way");
    const auto stays = [&] {
        realInput::key("Ctrl+Q");
        EXPECT_TRUE(world.areAllAnswered());
        EXPECT_TRUE(eventually([&] { return world.window()->isVisible(); }));
        EXPECT_TRUE(exists(path));
        return world.giveKeyboard();
    };
    world.answer(hidingFailed, "Return to Veilkeep");
    ASSERT_TRUE(stays());
    world.whenOpen(hidingFailed, [](QWidget&) { realInput::key("Escape"); });
    ASSERT_TRUE(stays());

    world.answer(hidingFailed, "Force Quit");
    EXPECT_TRUE(world.quits([] { realInput::key("Ctrl+Q"); }));
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(exists(path));
}

} // namespace
} // namespace veilkeep::test
