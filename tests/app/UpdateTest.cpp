#include "tests/app/AppWorld.h"
#include "tests/support/bus/FakePackageKit.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

bool says(const QWidget& dialog, const QString& text) {
    return eventually([&] { return AppWorld::says(dialog, text); });
}

class UpdateTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!bus.whyMissing().empty())
            GTEST_SKIP() << bus.whyMissing();
        ASSERT_TRUE(world.start());
        world.addFile("a");
        world.addFile("b");
        ASSERT_TRUE(eventually([this] { return world.parts().events.systemBus().isUp(); }));
    }

    // The window that is open then.
    QWidget* check() {
        EXPECT_TRUE(world.choose({"Help", "Check for Updates…"}));
        return world.dialog();
    }

    PrivateBus bus{appScratch()};
    AppWorld world;
};

TEST_F(UpdateTest, ShowsWhatCameOfIt) {
    QWidget* dialog = check();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(says(*dialog, "no package service"));
    EXPECT_FALSE(UserDefaults().contains("LastUpdateCheck"));
    realInput::key("Return");
    world.expectKeysToArrive();

    const FakePackageKit service({{"RefreshCache", {}},
                                  {"Resolve installed", {{"veilkeep;1.0;amd64;installed"}}},
                                  {"GetUpdates", {{"veilkeep;2.0;amd64;main"}}}});
    dialog = check();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(says(*dialog, "Version 2.0 can be installed, you have version 1.0."));
    EXPECT_TRUE(UserDefaults().contains("LastUpdateCheck")) << "not stored at once";
    world.app().perform(Command::CheckForUpdates);
    EXPECT_TRUE(says(*dialog, "Looking for updates"));
    EXPECT_TRUE(says(*dialog, "Version 2.0 can be installed"));
    realInput::key("Escape");
    world.expectKeysToArrive();
}

TEST_F(UpdateTest, IsGivenUpWhenItsWindowCloses) {
    const FakePackageKit service({{"RefreshCache", {{}, {}, false, true}}});
    QWidget* const dialog = check();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(eventually([&] { return !service.calls("RefreshCache").empty(); }));
    ASSERT_TRUE(AppWorld::clickButton(*dialog, "Cancel"));
    EXPECT_TRUE(eventually([&] { return !service.calls("Cancel").empty(); }));
    EXPECT_FALSE(world.parts().updater.isChecking());
}

} // namespace
} // namespace veilkeep::test
