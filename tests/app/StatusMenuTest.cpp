#include "core/storage/DefaultsKeys.h"
#include "tests/app/AppWorld.h"
#include "tests/support/RunProgram.h"
#include "tests/support/bus/FakeTray.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <map>
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

    void closeWindow() {
        realInput::key("Ctrl+W");
        EXPECT_TRUE(eventually([this] { return !world->parts().window.isVisible(); }));
    }
    QStringList groupsInMenu() {
        QStringList names;
        for (const TrayEntry& entry : tray->menu())
            for (const TrayEntry& group : entry.children)
                names << group.label;
        return names;
    }

    PrivateBus bus{appScratch(), PrivateBus::Place::Session};
    std::optional<FakeTray> tray;
    std::optional<AppWorld> world;
};

TEST_F(StatusMenuTest, HidesAndShowsEachGroupAndOutlivesItsHost) {
    ASSERT_TRUE(startWithTray());
    const QStringList names{"All Files", "Secret Pictures", "Private Files", "AutoHide Group", "New Group"};
    world->groups().addGroup();
    EXPECT_TRUE(eventually([&] { return groupsInMenu() == names; }));
    std::map<QString, std::string> paths;
    for (const QString& name : names)
        paths[name] = world->addFileToGroup("of " + name.toStdString(), name.toStdString());
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        ASSERT_TRUE(tray->choose({"Groups", name, "Hide"}));
        for (const auto& [group, path] : paths)
            EXPECT_TRUE(group == name || name == names[0] ? world->isHidden(path) : world->isShown(path))
                << path;
        ASSERT_TRUE(tray->choose({"Groups", name, "Show"}));
        for (const auto& [group, path] : paths)
            EXPECT_TRUE(world->isShown(path)) << path;
    }

    tray->stop();
    EXPECT_TRUE(eventually([this] { return !world->app().hasStatusBarItem(); }));
    tray->start();
    ASSERT_TRUE(isIconThere());
    ASSERT_TRUE(tray->choose({"Groups", "New Group", "Hide"}));
    EXPECT_TRUE(world->isHidden(paths["New Group"]));
}

TEST_F(StatusMenuTest, AsksForThePasswordFirst) {
    ASSERT_TRUE(startWithTray());
    const std::string diary = world->addFileToGroup("diary", "AutoHide Group"),
                      letter = world->addFileToGroup("letter", "Private Files");
    closeWindow();
    tray->click();
    EXPECT_TRUE(eventually([this] { return world->parts().window.isVisible(); })) << "there is no password";
    ASSERT_TRUE(world->giveKeyboard());
    AppWorld::setPassword("secret");
    closeWindow();

    bool isPanelOpen = false;
    const auto mayAdd = [&] {
        world->whenOpen("Add Items", [&](QWidget&) { isPanelOpen = true, realInput::key("Escape"); });
    };
    const struct {
        QStringList entry;
        std::function<bool()> isDone;
        std::function<void()> expect = [] {};
    } rows[] = {
        {{"Groups", "Private Files", "Hide"}, [&] { return world->isHiddenOnDisk(letter) && exists(diary); }},
        {{"Groups", "Private Files", "Show"}, [&] { return exists(letter); }},
        {{"Hide AutoHide Groups"}, [&] { return world->isHiddenOnDisk(diary) && exists(letter); }},
        {{"Show AutoHide Groups"}, [&] { return exists(diary); }},
        {{"Add Items…"}, [&] { return isPanelOpen; }, mayAdd},
        {{"Show Veilkeep…"}, [&] { return world->parts().window.isVisible(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.entry.join('/').toStdString());
        for (const bool isRight : {false, true}) {
            world->whenOpen(AppWorld::prompt, [&](QWidget&) {
                EXPECT_FALSE(row.isDone());
                realInput::type(isRight ? "secret" : "wrong");
                realInput::key("Return");
                if (!isRight)
                    realInput::key("Escape");
            });
            if (isRight)
                row.expect();
            ASSERT_TRUE(tray->choose(row.entry));
            EXPECT_TRUE(world->areAllAnswered());
            EXPECT_TRUE(eventually([&] { return row.isDone() == isRight && world->isAtRest(); }));
        }
    }
}

TEST_F(StatusMenuTest, TellsOfTheProgramAndEndsItWithoutThePassword) {
    ASSERT_TRUE(startWithTray());
    const std::string path = world->addFileToGroup("diary", "AutoHide Group");
    AppWorld::setPassword("secret");
    closeWindow();
    world->whenOpen("About Veilkeep", [](QWidget&) { realInput::key("Escape"); });
    ASSERT_TRUE(tray->choose({"About Veilkeep"}));
    EXPECT_TRUE(world->areAllAnswered());
    EXPECT_TRUE(world->quits([this] { tray->choose({"Quit Veilkeep"}); }));
    EXPECT_TRUE(world->isHiddenOnDisk(path));
    EXPECT_FALSE(world->openDialog(AppWorld::prompt));
}

// Each window says it before it is shown, as window managers want it.
TEST_F(StatusMenuTest, WithoutEntriesInTheTaskbarTheIconIsThereOrElseTheEntries) {
    const char* const askProperty = "/usr/bin/xprop";
    if (!exists(askProperty))
        GTEST_SKIP() << "there is no " << askProperty;
    UserDefaults defaults;
    defaults.set(defaultsKey::dockIconHidden, true);
    defaults.set(defaultsKey::showMenuIcon, false);
    ASSERT_TRUE(defaults.synchronize());
    world.reset();
    world.emplace();
    ASSERT_TRUE(startWithTray()) << "whatever the setting of the icon";
    const auto hasEntry = [&] {
        world->window()->hide();
        world->window()->show();
        const ProgramRun run =
            runProgram({askProperty, "-id", std::to_string(world->window()->winId()), "_NET_WM_STATE"});
        return run.output.find("_NET_WM_STATE_SKIP_TASKBAR") == std::string::npos;
    };
    EXPECT_FALSE(hasEntry());
    world->app().removeStatusBarItem();
    EXPECT_TRUE(world->app().hasStatusBarItem());
    tray->stop();
    EXPECT_TRUE(eventually([this] { return !world->app().hasStatusBarItem(); }));
    EXPECT_TRUE(hasEntry());
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
