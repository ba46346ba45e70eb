#include "core/storage/DefaultsKeys.h"
#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

PrefsWindow* openPreferences(AppWorld& world) {
    PrefsWindow* const window = world.parts().preferences.get();
    return window && window->isVisible() ? window : nullptr;
}

void setPassword(AppWorld& world) {
    PrefsWindow& window = *openPreferences(world);
    ASSERT_TRUE(showAndActivate(window));
    EXPECT_TRUE(AppWorld::clickButton(window, "Set Password…"));
    for (const char* const key : {"Tab", "Return"}) {
        realInput::type("secret");
        realInput::key(key);
    }
}

TEST(PreferencesTest, KeysAndToolbarLeadThere) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    realInput::key("Ctrl+,");
    ASSERT_TRUE(openPreferences(world));
    EXPECT_EQ(openPreferences(world)->windowTitle(), "General");
    openPreferences(world)->close();
    ASSERT_TRUE(world.giveKeyboard());
    EXPECT_TRUE(world.clickTool(Command::Password));
    ASSERT_TRUE(openPreferences(world));
    EXPECT_EQ(openPreferences(world)->windowTitle(), "Security");
    setPassword(world);
    EXPECT_TRUE(UserDefaults().boolean(defaultsKey::passwordEnabled).value_or(false));
    realInput::key("Escape");
    EXPECT_FALSE(openPreferences(world));
}

TEST(PreferencesTest, AreNotOpenBehindThePassword) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    MainWindowController& controller = world.parts().list.window();
    world.app().openPassDialog();
    controller.lockApplication(Absence::Lock);
    EXPECT_TRUE(openPreferences(world)) << "without a password there is nothing to guard";
    controller.unlockApplication();
    EXPECT_TRUE(eventually([&] { return world.parts().window.isVisible() && world.isAtRest(); }));
    setPassword(world);
    controller.lockApplication(Absence::Lock);
    EXPECT_FALSE(openPreferences(world));
    const std::function<void()> ways[] = {[&] { world.app().showPreferenceWindow(); },
                                          [&] { world.app().openPassDialog(); }};
    for (const auto& way : ways) {
        for (const bool isRight : {false, true}) {
            world.whenOpen(AppWorld::prompt, [&](QWidget&) {
                EXPECT_FALSE(openPreferences(world));
                realInput::type(isRight ? "secret" : "wrong");
                realInput::key(isRight ? "Return" : "Escape");
            });
            way();
            EXPECT_TRUE(world.areAllAnswered());
            EXPECT_EQ(openPreferences(world) != nullptr, isRight);
        }
        openPreferences(world)->close();
    }
}

TEST(PreferencesTest, BroughtToTheFrontTheySayWhatHoldsNow) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    world.app().showPreferenceWindow();
    PrefsWindow& window = *openPreferences(world);
    window.showMinimized();
    UserDefaults other;
    other.set(defaultsKey::playSounds, false);
    ASSERT_TRUE(other.synchronize());
    world.app().showPreferenceWindow();
    EXPECT_FALSE(window.isMinimized());
    EXPECT_FALSE(window.isOn(PrefsBox::PlaySoundsBox));

    ASSERT_TRUE(world.parts().list.passwords().setPassword("secret"));
    other.set(defaultsKey::passwordEnabled, true);
    ASSERT_TRUE(other.synchronize());
    EXPECT_FALSE(window.isOn(PrefsBox::RequirePasswordBox)) << "nothing was done there yet";
    world.parts().prefs.changePasswordClick();
    EXPECT_EQ(window.page(), PrefsPage::ChangePassword);
    EXPECT_TRUE(window.isOn(PrefsBox::RequirePasswordBox));
    other.set(defaultsKey::passwordEnabled, false);
    ASSERT_TRUE(other.synchronize());
    world.parts().prefs.requirePasswordClick();
    EXPECT_EQ(window.page(), PrefsPage::SetPassword);
    EXPECT_FALSE(window.isOn(PrefsBox::RequirePasswordBox));
}

TEST(PreferencesTest, DamagedSettingsAreToldAndKeptAside) {
    const std::string file = OwnPlaces::current().defaultsFile;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    AppWorld world;
    writeFile(file, "<plist");
    world.answer("The settings were damaged and begin anew.", "OK");
    ASSERT_TRUE(world.app().start());
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.parts().damagedSettings && *world.parts().damagedSettings);
    EXPECT_EQ(readFile(**world.parts().damagedSettings), "<plist");
    EXPECT_EQ(*UserDefaults().keepDamagedAside(), std::nullopt) << "nothing to tell at the next start";
    writeFile(file, "<plist damaged while the program runs");
    world.answer("The settings were damaged and begin anew.", "OK");
    world.parts().defaults.set(defaultsKey::playSounds, false);
    EXPECT_TRUE(world.parts().defaults.synchronize());
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_EQ(world.parts().defaults.boolean(defaultsKey::playSounds), false);
}

} // namespace
} // namespace veilkeep::test
