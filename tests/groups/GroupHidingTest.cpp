#include "core/log/Log.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/FailingCall.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

// Answers each question that asks nobody as it is told to.
class Authority : public RightsAuthority {
public:
    Answer check(const std::string&, Interaction interaction) override {
        ++(interaction == Interaction::Allowed ? questions : looks);
        return answer;
    }
    Answer giveUp(const std::string&) override { return Answer::Granted; }
    Answer answer = Answer::Granted;
    int questions = 0, looks = 0;
};

class GroupHidingTest : public ::testing::Test {
protected:
    std::string log() const { return readFile(Log::shared().path()); }
    // The items in files "0", "1" and so on of the folder.
    FilesViewController::Files fill(GroupWorld& world, const ListedGroup& group, const std::string& folder,
                                    int count) const {
        FilesViewController::Files files;
        for (int number = 0; number < count; ++number)
            files.push_back(world.add(m_tree.makeFile(folder + "/" + std::to_string(number)), group));
        return files;
    }

    const ScratchTree m_tree;
};

// What each command makes of a shown and a hidden group: 0 and 1, and of an item in it that the search hides
// from the table.
TEST_F(GroupHidingTest, HidesAndShowsAGroup) {
    using World = GroupWorld&;
    struct Row {
        const char* what;
        std::function<void(World)> command;
        int fromShown, fromHidden;
        bool takesAll; // not only what the table shows
    };
    const Row rows[] = {
        {"hide current", [](World w) { w.groups.hideCurrentGroup(); }, 1, 1, false},
        {"unhide current", [](World w) { w.groups.unhideCurrentGroup(); }, 0, 0, false},
        {"switch on", [](World w) { w.groups.switchOnOff(1); }, 1, 1, false},
        {"switch off", [](World w) { w.groups.switchOnOff(0); }, 0, 0, false},
        {"right key", [](World w) { w.groups.commandRightKeyPressed(); }, 1, 1, false},
        {"left key", [](World w) { w.groups.commandLeftKeyPressed(); }, 0, 0, false},
        {"menu", [](World w) { w.groups.hideUnhideGroup(w.row(2)); }, 1, 0, true},
        {"menu, no group", [](World w) { w.groups.hideUnhideGroup(nullptr); }, 0, 1, true},
        {"hide", [](World w) { EXPECT_TRUE(w.groups.hideGroupWithName("Secret Pictures", false)); }, 1, 1,
         true},
        {"unhide", [](World w) { EXPECT_TRUE(w.groups.unhideGroupWithName("Secret Pictures", false)); }, 0, 0,
         true},
        {"hide nobody", [](World w) { EXPECT_FALSE(w.groups.hideGroupWithName("nobody", false)); }, 0, 1,
         true},
        {"hide the header", [](World w) { EXPECT_FALSE(w.groups.hideGroupWithName("Custom Groups", false)); },
         0, 1, true},
        {"waits its turn, and the selection changes",
         [](World w) {
             w.list.turns.run([&] {
                 w.groups.hideCurrentGroup();
                 EXPECT_EQ(w.list.list->files().all().front()->prevState(), 0);
                 w.groups.selectRow(3);
             });
         },
         1, 1, true},
    };
    for (const Row& row : rows)
        for (const int before : {0, 1}) {
            SCOPED_TRACE(::testing::Message() << row.what << " from " << before);
            GroupWorld::forgetAll();
            std::filesystem::remove_all(m_tree.path("t"));
            GroupWorld world;
            world.started();
            const ListedFile shown = world.add(m_tree.makeFile("t/shown"), world.row(2));
            const ListedFile filtered = world.add(m_tree.makeFile("t/filtered"), world.row(2));
            const ListedFile other = world.add(m_tree.makeFile("t/other"), world.row(3));
            if (before == 1) {
                ASSERT_TRUE(world.groups.hideGroup(world.row(2), false));
            }
            world.groups.selectRow(2);
            world.list.list->filterController().setSearchText("shown");
            row.command(world);
            const int after = before == 0 ? row.fromShown : row.fromHidden;
            EXPECT_EQ(world.row(2)->state(), after);
            EXPECT_EQ(shown->state(), after);
            EXPECT_EQ(exists(m_tree.path("t/shown")), after == 0);
            EXPECT_EQ(filtered->state(), row.takesAll ? after : before);
            EXPECT_EQ(other->state(), File::Visible);
            EXPECT_EQ(GroupsInfoFile(GroupWorld::dataPath()).load().groups->at(2).state(), after);
        }
}

TEST_F(GroupHidingTest, HidesTheAutoHideGroupsAndShowsThemOnce) {
    GroupWorld world;
    world.started();
    const ListedGroup first = world.autoHideGroup(), second = world.autoHideGroup();
    const ListedFile plain = fill(world, world.row(2), "plain", 1).front();
    FilesViewController::Files files = fill(world, first, "first", 2);
    for (const ListedFile& file : fill(world, second, "second", 2))
        files.push_back(file);
    const auto expectStates = [&](int state) {
        for (const ListedFile& file : files)
            EXPECT_EQ(file->state(), state);
        EXPECT_EQ(first->state(), state);
        EXPECT_EQ(second->state(), state);
        EXPECT_EQ(plain->state(), File::Visible);
        EXPECT_EQ(world.mark.isSet(), state == File::Visible);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(world.groups.makeAutoHide("the screen was locked"));
        EXPECT_FALSE(world.groups.autoUnhideHappened());
        expectStates(File::Hidden);
        world.list.list->unhideFiles({files[1]}, true);
        EXPECT_TRUE(world.groups.makeAutoHide("again")) << "those that are hidden are gone through as well";
        expectStates(File::Hidden);
        world.groups.autoUnhideThread();
        EXPECT_TRUE(world.groups.autoUnhideHappened());
        expectStates(File::Visible);
        EXPECT_TRUE(world.groups.hideGroup(first, false));
        world.groups.autoUnhideThread();
        EXPECT_EQ(files[0]->state(), File::Hidden) << "once is enough";
    }
    EXPECT_NE(log().find("Hiding the AutoHide groups, 2 of them: the screen was locked"), std::string::npos);
}

// One item of three cannot be moved, both ways.
TEST_F(GroupHidingTest, TellsWhatStayedWhereItWas) {
    GroupWorld world;
    world.started();
    const ListedGroup group = world.autoHideGroup();
    FilesViewController::Files files = fill(world, group, "t", 3);
    const ListedFile missing = world.add(m_tree.path("t/missing"), group);
    const std::string inTheWay = m_tree.makeFile("t/.SYS_INDEX/1");
    SignalCount told(&world.groups, &GroupViewController::leftVisibleChanged);
    const HideOperations& operations = world.list.list->hideOperations();
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(world.groups.makeAutoHide("sleep"));
        EXPECT_EQ(group->state(), 1);
        EXPECT_EQ(files[2]->state(), File::Hidden);
        EXPECT_EQ(world.groups.leftVisible(), std::vector<std::string>{m_tree.path("t/1")});
        EXPECT_EQ(operations.errors().size(), 1U) << "the same is gathered once";
        EXPECT_TRUE(world.mark.isSet());
    }
    EXPECT_EQ(told.size(), 1);
    EXPECT_NE(
        log().find("Stayed visible: " + m_tree.path("t/1") + ": Item with the same name already exists."),
        std::string::npos);
    std::filesystem::remove(inTheWay);
    EXPECT_TRUE(world.groups.makeAutoHide("lock"));
    EXPECT_FALSE(world.mark.isSet());
    EXPECT_EQ(world.groups.leftVisible().size(), 1U) << "nobody has seen it yet";
    world.groups.leftVisibleWasSeen();
    EXPECT_TRUE(world.groups.leftVisible().empty());
    EXPECT_EQ(told.size(), 2);

    m_tree.makeFile("t/0");
    m_tree.makeFile("t/2");
    world.list.presenter.expect({.title = "Some errors have been occured while unhiding files",
                                 .answer = "OK",
                                 .message = "",
                                 .buttons = QStringList{"OK"}});
    world.groups.autoUnhideThread();
    EXPECT_EQ(world.list.presenter.shown().back().errors.size(), 3U) << "with that of the hiding";
    EXPECT_TRUE(operations.errors().empty());
    EXPECT_EQ(files[1]->state(), File::Visible);
    EXPECT_EQ(group->state(), 0);
    EXPECT_TRUE(world.groups.autoUnhideHappened());
    EXPECT_NE(log().find("Not brought back: " + std::string(files[2]->path())), std::string::npos);
}

TEST_F(GroupHidingTest, TurnsRoundWhenTheUserLeavesWhileItShows) {
    GroupWorld world;
    world.started();
    const ListedGroup first = world.autoHideGroup(), second = world.autoHideGroup();
    const FilesViewController::Files files = fill(world, first, "first", 3),
                                     others = fill(world, second, "second", 1);
    ASSERT_TRUE(world.groups.makeAutoHide("lock"));
    bool hasLeft = false;
    QObject::connect(&world.list.list->files(), &FileList::fileChanged, [&](const ListedFile&) {
        if (hasLeft)
            return;
        hasLeft = true;
        world.list.turns.leave([&] {
            EXPECT_EQ(files[0]->state(), File::Visible);
            EXPECT_EQ(files[1]->state(), File::Hidden);
            EXPECT_EQ(second->state(), 1) << "it was not begun with";
            EXPECT_TRUE(world.mark.isSet());
            EXPECT_TRUE(world.groups.makeAutoHide("lock"));
        });
    });
    world.list.turns.run([&] { world.groups.autoUnhideThread(); });
    EXPECT_TRUE(hasLeft);
    EXPECT_EQ(files[0]->state(), File::Hidden);
    EXPECT_FALSE(world.groups.autoUnhideHappened());
    EXPECT_FALSE(world.mark.isSet());
}

// Rights that are held are used; nobody is asked for others.
TEST_F(GroupHidingTest, AsksNobodyForRightsInAPass) {
    using Answer = RightsAuthority::Answer;
    struct Row {
        const char* what;
        bool isEnabled;
        Answer answer;
        bool isTried;
    };
    const Row rows[] = {
        {"held", true, Answer::Granted, true},
        {"not held", true, Answer::Refused, false},
        {"would be asked for", true, Answer::AskedEachRun, false},
        {"switched off", false, Answer::Granted, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Authority authority;
        GroupWorld world({.worker = m_tree.makeFile("worker", "#!/bin/sh\necho Error: 3\n", 0755),
                          .authority = &authority,
                          .pkexec = m_tree.path("no-pkexec")});
        world.started();
        world.list.defaults.set("allowPrivilidgedFiles", true);
        SecurityController::sharedInstance()->authorize();
        world.list.defaults.set("allowPrivilidgedFiles", row.isEnabled);
        const int questions = authority.questions;
        authority.answer = row.answer;
        fill(world, world.autoHideGroup(), "t", 2);
        writeFile(Log::shared().path(), "");
        EXPECT_FALSE(world.groups.makeAutoHide("sleep"));
        EXPECT_EQ(log().find("Administrator rights") != std::string::npos, row.isTried) << log();
        EXPECT_EQ(authority.questions, questions);
        EXPECT_EQ(world.groups.leftVisible().size(), 2U);
        EXPECT_EQ(world.list.list->hideOperations().errors().front().errorCode, "Not enough rights");
        EXPECT_FALSE(world.list.list->brokenFiles().isNobodyThere());
    }
}

// Whatever brings an item of an AutoHide group to sight sets the mark, and nothing else does.
TEST_F(GroupHidingTest, MarksThatAutoHideItemsMayBeVisible) {
    using World = GroupWorld&;
    struct Row {
        const char* what;
        std::function<void(World)> action;
        bool sets;
    };
    const auto file = [](World w, std::size_t number) { return w.list.list->files().all()[number]; };
    const Row rows[] = {
        {"the pass", [](World w) { w.groups.autoUnhideThread(); }, true},
        {"its group", [](World w) { w.groups.unhideGroup(w.row(4), true); }, true},
        {"all", [](World w) { w.groups.unhideGroup(w.row(0), true); }, true},
        {"the switch", [](World w) { w.groups.selectRow(4), w.groups.switchOnOff(0); }, true},
        {"itself", [&](World w) { w.list.list->unhideFiles({file(w, 0)}, true); }, true},
        {"into the group", [&](World w) { w.list.list->moveFiles({file(w, 1)}, 3); }, true},
        {"another group's mark", [](World w) { w.groups.setAutoHide(true, "Secret Pictures"); }, true},
        {"another group", [](World w) { w.groups.unhideGroup(w.row(2), true); }, false},
        {"another item", [&](World w) { w.list.list->hideFiles({file(w, 1)}, true); }, false},
        {"no mark", [](World w) { w.groups.setAutoHide(false, "Secret Pictures"); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        GroupWorld::forgetAll();
        std::filesystem::remove_all(m_tree.path("t"));
        GroupWorld world;
        world.started();
        fill(world, world.autoHideGroup(), "t/auto", 1);
        fill(world, world.row(2), "t/other", 1);
        EXPECT_TRUE(world.mark.isSet());
        ASSERT_TRUE(world.groups.makeAutoHide("quit"));
        ASSERT_FALSE(world.mark.isSet());
        row.action(world);
        EXPECT_EQ(world.mark.isSet(), row.sets);
        ASSERT_TRUE(world.groups.makeAutoHide("quit"));
        EXPECT_FALSE(world.mark.isSet());
    }
}

// Where the mark cannot be set items are shown all the same.
TEST_F(GroupHidingTest, ShowsWithoutAMark) {
    GroupWorld world;
    world.started();
    const FilesViewController::Files files = fill(world, world.autoHideGroup(), "t", 1);
    ASSERT_TRUE(world.groups.makeAutoHide("quit"));
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_fsync, EIO));
        world.groups.autoUnhideThread();
        EXPECT_EQ(files[0]->state(), File::Visible);
        EXPECT_NE(log().find("ended by force"), std::string::npos);
    }));
}

TEST_F(GroupHidingTest, PlaysASoundForTheCheckBox) {
    GroupWorld world;
    world.started().groups.selectRow(2);
    world.groups.autoHideChanged(true);
    EXPECT_EQ(world.row(2)->autoHide(), true);
    EXPECT_EQ(world.sounds.played, (std::map<std::string, int>{{"AutoHideSound", 1}}));
}

// The group file is written once in a pass, and neither file where nothing changed.
TEST_F(GroupHidingTest, SavesNoMoreThanItHasTo) {
    GroupWorld world;
    world.started();
    for (int number = 0; number < 3; ++number)
        fill(world, world.autoHideGroup(), "t" + std::to_string(number), 1);
    ASSERT_TRUE(world.groups.makeAutoHide("quit"));
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_fsync, EIO));
        EXPECT_TRUE(world.groups.makeAutoHide("quit"));
        EXPECT_FALSE(world.groups.saveTrouble());
        EXPECT_FALSE(world.list.list->saveTrouble());
    }));
}

} // namespace
} // namespace veilkeep::test
