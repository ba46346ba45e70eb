#include "tests/widgets/preferences/PrefsWorld.h"

namespace veilkeep::test {
namespace {

class PrefsWindowTest : public ::testing::Test {
protected:
    void SetUp() override { startAnew(); }

    void startAnew() {
        m_world.reset();
        m_world.emplace(m_tree);
        ASSERT_TRUE(m_world->show());
    }
    PrefsWindow& window() { return *m_world->window; }
    bool warnsOfRestart() { return !m_world->lines().isEmpty(); }

    ScratchTree m_tree;
    std::optional<PrefsWorld> m_world;
};

// Written at once, for other programs to see; read anew when the window is shown.
TEST_F(PrefsWindowTest, EachBoxIsWrittenAndReadAnew) {
    using namespace defaultsKey;
    const struct {
        const char* title;
        PrefsBox box;
        const char* key;
        bool whenAbsent;
        std::optional<Value> other, back; // what is stored by the first click, and by the second
        QString asked = {};
    } rows[] = {
        {"Icon in the panel", PrefsBox::ShowInMenuBarBox, showMenuIcon, true, false, true, "no icon icon "},
        {"Allow those that need administrator rights", PrefsBox::AllowPrivilidgedFilesBox,
         allowPrivilidgedFiles, false, true, false},
        {"Play sounds", PrefsBox::PlaySoundsBox, playSounds, true, false, true},
        {"Ask before removing them from the list", PrefsBox::AskBeforeRemovingBox, noRemoveWarning, true,
         true, std::nullopt},
        {"Remove their traces from lists of recent files while hiding", PrefsBox::CleanRecentItemsBox,
         cleanRecentItems, false, true, false},
        {"the computer goes to sleep", PrefsBox::HideOnSleepBox, hideOnSleep, true, false, true},
        {"the screen is locked", PrefsBox::HideOnLockBox, hideOnLock, true, false, true},
        {"another user's session comes to the front", PrefsBox::HideOnSessionSwitchBox, hideOnSessionSwitch,
         true, false, true},
        {"Veilkeep quits", PrefsBox::HideOnQuitBox, hideOnQuit, true, false, true},
    };
    EXPECT_EQ(m_world->stored(recentsQuestionAnswered), std::nullopt);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        if (row.box == PrefsBox::HideOnSleepBox)
            m_world->click("Security");
        m_world->asked.clear();
        EXPECT_EQ(window().isOn(row.box), row.whenAbsent);
        m_world->click(row.title);
        EXPECT_EQ(m_world->stored(row.key), row.other);
        EXPECT_EQ(window().isOn(row.box), !row.whenAbsent);
        m_world->click(row.title);
        EXPECT_EQ(m_world->stored(row.key), row.back);
        EXPECT_EQ(m_world->asked, row.asked);
        UserDefaults another;
        another.set(row.key, *row.other);
        ASSERT_TRUE(another.synchronize());
    }
    EXPECT_EQ(m_world->stored(recentsQuestionAnswered), Value(true));
    window().close();
    ASSERT_TRUE(m_world->show());
    for (const auto& row : rows)
        EXPECT_EQ(window().isOn(row.box), !row.whenAbsent) << row.title;
}

TEST_F(PrefsWindowTest, LoginAndFileManagers) {
    const char *login = "Launch Veilkeep at login",
               *menus = "“Hide with Veilkeep” and “Show in Veilkeep” in their menus";
    m_world->click(login);
    m_world->click(menus);
    EXPECT_TRUE(m_world->loginItem.launches && m_world->isPluginInstalled);
    m_world->loginItem.fails = true;
    m_world->click(login);
    EXPECT_TRUE(m_world->trouble().contains("Launching at login could not be changed. /autostart:"));
    EXPECT_TRUE(window().isOn(PrefsBox::LoginItemCheckBox)) << "as it is";
    m_world->loginItem.fails = false;
    m_world->click(login);
    EXPECT_EQ(m_world->trouble(), "");
    EXPECT_FALSE(m_world->loginItem.launches);

    window().close();
    m_world->isPluginInstalled = false; // by somebody else
    m_world->loginItem.launches = true;
    ASSERT_TRUE(m_world->show());
    EXPECT_FALSE(window().isOn(PrefsBox::InstallFinderPluginBox));
    EXPECT_TRUE(window().isOn(PrefsBox::LoginItemCheckBox));
    m_world->isPluginInstalled =
        true; // while the box says that it is not: a click does the opposite of what is
    m_world->click(menus);
    EXPECT_FALSE(m_world->isPluginInstalled || window().isOn(PrefsBox::InstallFinderPluginBox));
}

TEST_F(PrefsWindowTest, WithoutAnEntryInTheTaskbar) {
    const char* const inTaskbar = "Veilkeep in the taskbar";
    m_world->click("Icon in the panel");
    m_world->asked.clear();
    m_world->click(inTaskbar);
    EXPECT_EQ(m_world->asked, "relaunch icon ");
    EXPECT_TRUE(warnsOfRestart());
    EXPECT_EQ(m_world->stored(defaultsKey::dockIconHidden), Value(true));
    EXPECT_EQ(m_world->stored(defaultsKey::showMenuIcon), Value(true));
    EXPECT_EQ(m_world->stored(defaultsKey::showMenuIconOfOld), Value(std::int64_t{1}));
    EXPECT_TRUE(window().isOn(PrefsBox::ShowInMenuBarBox));
    EXPECT_FALSE(m_world->find<QCheckBox>("Icon in the panel")->isEnabled());
    EXPECT_FALSE(m_world->controller.dockIconIsHidden()) << "before the next start";
    m_world->click(inTaskbar);
    EXPECT_FALSE(warnsOfRestart());
    EXPECT_TRUE(m_world->find<QCheckBox>("Icon in the panel")->isEnabled());
    EXPECT_EQ(m_world->stored(defaultsKey::dockIconHidden), Value(false)) << "the user's word";

    m_world->click(inTaskbar);
    startAnew();
    EXPECT_TRUE(m_world->controller.dockIconIsHidden());
    EXPECT_FALSE(warnsOfRestart() || window().isOn(PrefsBox::ShowInDockBox));
    EXPECT_FALSE(m_world->find<QCheckBox>("Icon in the panel")->isEnabled());
    UserDefaults other;
    other.set(defaultsKey::showMenuIcon, false);
    ASSERT_TRUE(other.synchronize());
    EXPECT_TRUE(m_world->controller.showsMenuIcon()) << "never without both";
}

TEST_F(PrefsWindowTest, WithoutAWordOfTheUserTheBundleSaysIt) {
    m_tree.makeFile("Contents/Info.plist",
                    "<plist version=\"1.0\"><dict><key>LSUIElement</key><true/></dict></plist>");
    startAnew();
    EXPECT_TRUE(m_world->controller.dockIconIsHidden());
    m_world->click("Veilkeep in the taskbar");
    EXPECT_TRUE(warnsOfRestart());
    EXPECT_FALSE(m_world->find<QCheckBox>("Icon in the panel")->isEnabled()) << "before the next start";
    startAnew();
    EXPECT_FALSE(m_world->controller.dockIconIsHidden());
}

TEST_F(PrefsWindowTest, TheAutoHideExampleIsMadeOnce) {
    EXPECT_TRUE(m_world->controller.needToCreateAutoHideExample());
    startAnew();
    EXPECT_FALSE(m_world->controller.needToCreateAutoHideExample());
}

TEST(FailedSettingTest, IsToldAndTheBoxGoesBack) {
    const ScratchTree tree;
    tree.makeFile("file");
    PrefsWorld world(tree, tree.path("file/settings.plist"));
    ASSERT_TRUE(world.show());
    const struct {
        const char* title;
        PrefsBox box;
    } rows[] = {
        {"Play sounds", PrefsBox::PlaySoundsBox},
        {"Remove their traces from lists of recent files while hiding", PrefsBox::CleanRecentItemsBox},
        {"Veilkeep in the taskbar", PrefsBox::ShowInDockBox}};
    for (const auto& row : rows) {
        const bool before = world.window->isOn(row.box);
        world.click(row.title);
        EXPECT_EQ(world.window->isOn(row.box), before) << row.title;
        EXPECT_TRUE(world.trouble().contains("The setting could not be stored.")) << row.title;
        world.find<QAbstractButton>("Dismiss this message")->click();
        EXPECT_EQ(world.trouble(), "");
    }
    EXPECT_EQ(world.asked, "") << "no relaunch for what was not stored";
    EXPECT_FALSE(world.defaults.contains(defaultsKey::recentsQuestionAnswered));
    EXPECT_FALSE(world.defaults.contains(defaultsKey::showMenuIconOfOld));
}

} // namespace
} // namespace veilkeep::test
