#include "session/MainWindowController.h"

#include "core/log/Log.h"
#include "tests/session/LeavingWorld.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

// The real worker, a desktop that says what the test wants, and a window that is not there.
class MainWindowControllerTest : public ::testing::Test {
protected:
    void SetUp() override { startAnew(); }

    void startAnew() {
        m_world.reset();
        m_world.emplace(m_tree);
        if (m_world->list.list->files().size() == 0)
            m_world->makeItems();
        m_world->events.whenReleased = [this] {
            EXPECT_TRUE(m_world->areHidden());
            EXPECT_FALSE(m_world->window.visible);
            EXPECT_FALSE(m_world->groups.autoUnhideHappened());
        };
        m_world->window.whenShown = [this] { EXPECT_TRUE(m_world->areHidden()); };
        m_world->controller.start();
    }

    void tell(Absence kind, bool isAway) { emit m_world->events.absenceChanged(kind, isAway); }

    void leaveAndComeBack() {
        tell(Absence::Lock, true);
        tell(Absence::Lock, false);
    }

    bool turnUntilShown() {
        return turnUntil([this] {
            return m_world->window.visible && m_world->areVisible() && m_world->groups.autoUnhideHappened();
        });
    }

    void stayAwayForLonger() {
        bool isOver = false;
        QTimer::singleShot(2 * Presence::quiet, [&] { isOver = true; });
        EXPECT_TRUE(turnUntil([&] { return isOver; }));
        EXPECT_FALSE(m_world->window.visible);
    }

    // A capital begins an absence (Sleep, Lock, Background), a small letter ends it, "." waits until all is
    // shown, "~" stays away for longer than a coming back takes, "!" is the user at the window, and "?" a
    // program that begins and would show what it finds hidden.
    void play(const std::string& script) {
        for (const char step : script) {
            if (step == '!')
                m_world->controller.showVeilkeepActivateApp(true);
            else if (step == '?')
                m_world->controller.unlockApplication();
            else if (step == '.')
                EXPECT_TRUE(turnUntilShown());
            else if (step == '~')
                stayAwayForLonger();
            else {
                const bool isAway = step < 'a';
                const char kind = isAway ? step : static_cast<char>(step - ('a' - 'A'));
                tell(kind == 'S' ? Absence::Sleep : kind == 'L' ? Absence::Lock : Absence::Session, isAway);
            }
        }
    }

    ScratchTree m_tree;
    std::optional<LeavingWorld> m_world;
};

TEST_F(MainWindowControllerTest, OnePassPerLeavingAndOneShowPerReturn) {
    struct {
        const char* script;
        int passes;
        int shows;
    } const rows[] = {
        {"Ss.", 1, 1},
        {"Ll.", 1, 1},
        {"Bb.", 1, 1},
        // All together, each of them first and last, and doubled.
        {"SLBslb.", 3, 1},
        {"LSBbsl.", 3, 1},
        {"BLSbls.", 3, 1},
        {"SSLLssll.", 2, 1},
        // Ends without a begin; left again before the return; as if the wake had never been told.
        {"lsb", 0, 0},
        {"lSlbs.", 1, 1},
        {"SLsSsl.", 3, 1},
        {"LlL~l.", 2, 1},
        {"Ss.Ll.Bb.", 3, 3},
        {"!Ll.", 1, 2},
        {"L!.l", 1, 1},
        {"L?~l.", 1, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        startAnew();
        const int releasesBefore = m_world->events.releases;
        play(row.script);
        EXPECT_EQ(m_world->events.releases - releasesBefore, row.passes);
        EXPECT_EQ(m_world->window.shows, row.shows);
        emit m_world->events.endRequested(Ending::Logout);
    }
}

TEST_F(MainWindowControllerTest, NobodyIsAskedInTheMidstOfALeaving) {
    m_world->setPassword();
    m_world->events.whenReleased = [this] { m_world->controller.showVeilkeepActivateApp(true); };
    emit m_world->events.endRequested(Ending::Logout);
    EXPECT_EQ(m_world->prompt.runs, 0);
    EXPECT_EQ(m_world->events.releases, 1);
}

TEST_F(MainWindowControllerTest, OnlyThePasswordBringsTheWindowBack) {
    const auto right = [](PasswordManager& manager) { manager.okClick(LeavingWorld::password); };
    const auto wrong = [](PasswordManager& manager) { manager.okClick("wrong"); };
    m_world->setPassword();
    struct {
        const char* name;
        std::function<void(PasswordManager&)> prompt;
        bool shows;
    } const rows[] = {
        {"right at the second time", [&](auto& manager) { wrong(manager), right(manager); }, true},
        {"wrong four times",
         [&](auto& manager) {
             for (int entry = 0; entry < 4; ++entry)
                 wrong(manager);
             right(manager);
         },
         false},
        {"cancelled", [](auto& manager) { manager.cancelClick(); }, false},
        {"the user leaves again", [&](auto&) { tell(Absence::Sleep, true); }, false},
        {"coming back is told again",
         [&](auto& manager) {
             m_world->controller.unlockApplication();
             m_world->controller.showVeilkeepActivateApp(true);
             manager.cancelClick();
         },
         false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const int runs = m_world->prompt.runs;
        m_world->prompt.script = {row.prompt};
        leaveAndComeBack();
        EXPECT_FALSE(m_world->controller.operationAllowedWithoutAsking());
        EXPECT_TRUE(
            turnUntil([&] { return m_world->prompt.runs > runs && !m_world->passwords.isPromptVisible(); }));
        if (!row.shows) {
            EXPECT_FALSE(m_world->window.visible);
            EXPECT_TRUE(m_world->areHidden());
            EXPECT_FALSE(m_world->groups.autoUnhideHappened());
            m_world->prompt.script = {right};
            m_world->controller.unlockApplication(); // the next attempt
            tell(Absence::Sleep, false);
        }
        EXPECT_TRUE(turnUntilShown());
        EXPECT_EQ(m_world->prompt.runs, runs + (row.shows ? 1 : 2));
        EXPECT_TRUE(m_world->controller.operationAllowed()); // the window is open
    }
}

// What runs when the user leaves: a batch that shows, one that hides, a question. Whatever waits comes after.
TEST_F(MainWindowControllerTest, LeavingInTheMidstOfSomething) {
    FilesViewController& files = *m_world->list.list;
    const auto leaveAtFirstItem = [&] {
        QObject::connect(
            &files.files(), &FileList::fileChanged, &files, [this] { leaveAndComeBack(); },
            Qt::SingleShotConnection);
    };
    const auto all = [&] { return files.files().all(); };
    const std::function<void()> rows[] = {
        [&] {
            leaveAtFirstItem();
            EXPECT_FALSE(files.unhideFiles(all(), true));
            EXPECT_FALSE(m_world->areVisible());
        },
        [&] {
            leaveAtFirstItem();
            EXPECT_TRUE(files.hideFiles(all(), true));
            EXPECT_TRUE(m_world->areHidden());
        },
        [&] {
            m_world->list.presenter.expect({.title = "?", .whileOpen = [this] { leaveAndComeBack(); }});
            Alert question;
            question.title = "?";
            EXPECT_EQ(m_world->list.alerts.runAlert(question, {"OK", "Cancel"}), 1001);
        },
    };
    for (const auto& row : rows) {
        const int releases = m_world->events.releases;
        m_world->list.turns.run([&] {
            row();
            EXPECT_EQ(m_world->events.releases, releases);
            m_world->list.turns.run([&] { EXPECT_EQ(m_world->events.releases, releases + 1); });
        });
        EXPECT_EQ(m_world->events.releases, releases + 1);
        EXPECT_TRUE(turnUntilShown());
    }
}

TEST_F(MainWindowControllerTest, EndsHiddenAndSavedAndDropsWhatWaits) {
    m_world->controller.showVeilkeepActivateApp(false);
    ASSERT_TRUE(turnUntilShown());
    int ended = 0;
    QObject::connect(&m_world->controller, &MainWindowController::ended, [&](Ending ending) {
        ++ended;
        EXPECT_EQ(ending, Ending::Signal);
        EXPECT_EQ(m_world->events.releases, 1);
    });
    m_world->list.turns.run([this] {
        emit m_world->events.endRequested(Ending::Signal);
        emit m_world->events.endRequested(Ending::Shutdown);
        m_world->list.turns.run([] { ADD_FAILURE() << "works on a list that was given up"; });
    });
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(m_world->areHidden());
    EXPECT_FALSE(m_world->mark.isSet());
    EXPECT_NE(readFile(Log::shared().path()).find(" terminated..."), std::string::npos);
}

// The window is open and all is visible, then a script as above.
TEST_F(MainWindowControllerTest, WhatDoesNotCountAsLeaving) {
    struct {
        const char* off;
        const char* script;
        int releases;
        int shows; // again
        bool endsVisible;
    } const rows[] = {
        {defaultsKey::hideOnSleep, "Ss", 1, 0, true}, // what is held up goes on at once
        {defaultsKey::hideOnLock, "Ll", 0, 0, true},
        {defaultsKey::hideOnSessionSwitch, "Bb", 0, 0, true},
        {defaultsKey::hideOnLock, "Ss.", 1, 1, true},
        {defaultsKey::hideOnSleep, "Ll.", 1, 1, true},
        {defaultsKey::hideOnSleep, "Bb.", 1, 1, true},
        {defaultsKey::hideOnLock, "LSs.", 1, 1, true}, // locked all the while
        {defaultsKey::hideOnLock, "SLs.l", 1, 1, true},
        {defaultsKey::hideOnSleep, "LSs~", 2, 0, false},
        {defaultsKey::hideOnSleep, "LSsl.", 2, 1, true},
        {defaultsKey::hideOnQuit, "Ll.", 1, 1, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.off) + " off: " + row.script);
        startAnew();
        m_world->events.whenReleased = [] {};
        m_world->window.whenShown = [] {};
        m_world->list.defaults.set(row.off, false);
        play("!.");
        const int releasesBefore = m_world->events.releases, showsBefore = m_world->window.shows;
        play(row.script);
        EXPECT_EQ(m_world->events.releases - releasesBefore, row.releases);
        EXPECT_EQ(m_world->window.shows - showsBefore, row.shows);
        EXPECT_EQ(m_world->window.visible, row.endsVisible);
        EXPECT_EQ(m_world->areVisible(), row.endsVisible);
        m_world->list.defaults.remove(row.off);
        emit m_world->events.endRequested(Ending::Logout);
    }
}

TEST_F(MainWindowControllerTest, SleepThatDoesNotCountWaitsForWhatHidesAtAnotherSign) {
    m_world->list.defaults.set(defaultsKey::hideOnSleep, false);
    play("!.");
    m_world->list.turns.run([this] {
        tell(Absence::Lock, true);
        tell(Absence::Sleep, true);
        EXPECT_EQ(m_world->events.releases, 0);
    });
    EXPECT_EQ(m_world->events.releases, 1) << "and all was hidden by then";
}

TEST_F(MainWindowControllerTest, QuittingThatDoesNotHideLeavesAllVisibleForTheNextStart) {
    for (const Ending ending : {Ending::Signal, Ending::Logout, Ending::Shutdown}) {
        m_world->list.defaults.set(defaultsKey::hideOnQuit, false);
        ASSERT_TRUE(m_world->list.defaults.synchronize());
        play("!.");
        m_world->events.whenReleased = [] {};
        emit m_world->events.endRequested(ending);
        EXPECT_EQ(m_world->events.releases, 1);
        EXPECT_TRUE(m_world->areVisible());
        startAnew();
        EXPECT_TRUE(m_world->areVisible());
        m_world->window.whenShown = [] {};
    }
    play("L");
    EXPECT_TRUE(m_world->areHidden()) << "the screen is locked";
}

} // namespace
} // namespace veilkeep::test
