#include "core/log/Log.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/FailingCall.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

using Files = FilesViewController::Files;

class GroupHidingTest : public ::testing::Test {
protected:
    static bool isLogged(const std::string& text) {
        return readFile(Log::shared().path()).find(text) != std::string::npos;
    }
    // Items in files "0", "1" and so on of the folder.
    Files fill(GroupWorld& world, const ListedGroup& group, const std::string& folder, int count) const {
        Files files;
        for (int number = 0; number < count; ++number)
            files.push_back(world.add(m_tree.makeFile(folder + "/" + std::to_string(number)), group));
        return files;
    }

    const ScratchTree m_tree;
};

// Those items as well that the search keeps from the table, but by the switch, which is for what is seen.
TEST_F(GroupHidingTest, HidesAndShowsAGroup) {
    GroupWorld world;
    const Files files = fill(world, world.started().row(2), "t", 2);
    const ListedFile other = fill(world, world.row(3), "t/other", 1).front();
    const auto expectStates = [&](int group, int first, int second) {
        EXPECT_EQ(world.row(2)->state(), group);
        EXPECT_EQ(files[0]->state(), first);
        EXPECT_EQ(files[1]->state(), second);
        EXPECT_EQ(other->state(), File::Visible);
        EXPECT_EQ(GroupsInfoFile(GroupWorld::dataPath()).load().groups->at(2).state(), group);
    };
    world.groups.selectRow(2);
    world.list.list->filterController().setSearchText("0");
    world.groups.switchOnOff(1);
    expectStates(1, 1, 0);
    world.groups.switchOnOff(0);
    expectStates(0, 0, 0);
    world.groups.hideUnhideGroup(world.row(2));
    expectStates(1, 1, 1);
    world.groups.hideUnhideGroup(world.row(2));
    expectStates(0, 0, 0);
    EXPECT_FALSE(world.groups.hideGroupWithName("Custom Groups", false));
}

TEST_F(GroupHidingTest, HidesTheAutoHideGroupsAndShowsThemOnce) {
    GroupWorld world;
    const ListedFile plain = fill(world, world.started().row(2), "plain", 1).front();
    const ListedGroup groups[] = {world.autoHideGroup(), world.autoHideGroup()};
    const ListedFile files[] = {fill(world, groups[0], "first", 1).front(),
                                fill(world, groups[1], "second", 1).front()};
    const auto expectStates = [&](int first, int second) {
        EXPECT_EQ(files[0]->state(), first);
        EXPECT_EQ(files[1]->state(), second);
        EXPECT_EQ(plain->state(), File::Visible);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(world.groups.makeAutoHide("the screen was locked"));
        expectStates(1, 1);
        world.list.list->unhideFiles({files[1]}, true);
        EXPECT_TRUE(world.groups.makeAutoHide("again")) << "groups that are hidden are gone through as well";
        expectStates(1, 1);
        world.groups.autoUnhideThread();
        expectStates(0, 0);
        EXPECT_TRUE(world.groups.hideGroup(groups[0], false));
        world.groups.autoUnhideThread();
        expectStates(1, 0); // once is enough
    }
    ASSERT_TRUE(world.groups.makeAutoHide("quit"));
    EXPECT_TRUE(runInChild([&] { // what changed nothing saves nothing
        ASSERT_TRUE(failCall(SYS_fsync, EIO));
        EXPECT_TRUE(world.groups.makeAutoHide("quit"));
        EXPECT_FALSE(world.groups.saveTrouble() || world.list.list->saveTrouble());
        world.groups.autoUnhideThread(); // without a mark
        expectStates(0, 0);
    }));
}

// One item of three cannot be moved, both ways, and one is missing.
TEST_F(GroupHidingTest, TellsWhatStayedWhereItWas) {
    GroupWorld world;
    const ListedGroup group = world.started().autoHideGroup();
    const Files files = fill(world, group, "t", 3);
    world.add(m_tree.path("t/missing"), group);
    const std::string inTheWay = m_tree.makeFile("t/.SYS_INDEX/1");
    const HideOperations& operations = world.list.list->hideOperations();
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(world.groups.makeAutoHide("sleep"));
        EXPECT_EQ(group->state(), 1);
        EXPECT_EQ(files[2]->state(), File::Hidden);
        EXPECT_EQ(world.groups.leftVisible(), std::vector<std::string>{m_tree.path("t/1")});
        EXPECT_EQ(operations.errors().size(), 1U) << "the same is gathered once";
        EXPECT_TRUE(world.mark.isSet());
    }
    std::filesystem::remove(inTheWay);
    EXPECT_TRUE(world.groups.makeAutoHide("lock"));
    EXPECT_FALSE(world.mark.isSet());
    EXPECT_EQ(world.groups.leftVisible().size(), 1U) << "nobody has seen it yet";
    world.groups.leftVisibleWasSeen();
    EXPECT_TRUE(world.groups.leftVisible().empty());

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
}

// What has gone elsewhere is looked for when the user wants it, not each time that he comes back.
TEST_F(GroupHidingTest, SearchesNoVolumeInAPass) {
    GroupWorld world;
    const ListedFile file = fill(world, world.started().autoHideGroup(), "t", 1).front();
    ASSERT_TRUE(world.groups.makeAutoHide("lock"));
    m_tree.makeDirectory("elsewhere");
    const std::string moved = m_tree.path("elsewhere/0");
    std::filesystem::rename(m_tree.path("t/.SYS_INDEX/0"), moved);
    world.groups.autoUnhideThread();
    EXPECT_EQ(file->state(), File::Broken);
    world.list.list->unhideFiles({file}, true);
    EXPECT_EQ(file->state(), File::Visible);
    EXPECT_EQ(file->path(), moved);
}

TEST_F(GroupHidingTest, TurnsRoundWhenTheUserLeavesWhileItShows) {
    GroupWorld world;
    const ListedGroup first = world.started().autoHideGroup(), second = world.autoHideGroup();
    const Files files = fill(world, first, "first", 2);
    fill(world, second, "second", 1);
    ASSERT_TRUE(world.groups.makeAutoHide("lock"));
    bool hasLeft = false;
    QObject::connect(&world.list.list->files(), &FileList::fileChanged, [&](const ListedFile&) {
        if (std::exchange(hasLeft, true))
            return;
        world.list.turns.leave([&] {
            EXPECT_EQ(files[0]->state(), File::Visible);
            EXPECT_EQ(files[1]->state(), File::Hidden);
            EXPECT_EQ(second->state(), 1) << "it was not begun with";
            EXPECT_TRUE(world.groups.makeAutoHide("lock"));
        });
    });
    world.list.turns.run([&] { world.groups.autoUnhideThread(); });
    EXPECT_TRUE(hasLeft);
    EXPECT_EQ(files[0]->state(), File::Hidden);
    EXPECT_FALSE(world.groups.autoUnhideHappened());
}

// Rights that are held are used; nobody is asked for others.
TEST_F(GroupHidingTest, AsksNobodyForRightsInAPass) {
    using Answer = RightsAuthority::Answer;
    const std::tuple<bool, Answer, bool> rows[] = {
        // enabled, held, tried
        {true, Answer::Granted, true},
        {true, Answer::Refused, false},
        {true, Answer::AskedEachRun, false},
        {false, Answer::Granted, false},
    };
    for (const auto& [isEnabled, answer, isTried] : rows) {
        SCOPED_TRACE(::testing::Message() << isEnabled << " " << static_cast<int>(answer));
        Authority authority;
        GroupWorld world({.worker = m_tree.makeFile("worker", "#!/bin/sh\necho Error: 3\n", 0755),
                          .authority = &authority,
                          .pkexec = m_tree.path("no-pkexec")});
        SecurityController::sharedInstance()->authorize();
        world.list.defaults.set("allowPrivilidgedFiles", isEnabled);
        authority.answer = answer;
        fill(world, world.started().autoHideGroup(), "t", 2);
        logLine("from here on"); // makes the file where there is none
        writeFile(Log::shared().path(), "");
        EXPECT_FALSE(world.groups.makeAutoHide("sleep"));
        EXPECT_EQ(isLogged("Administrator rights"), isTried);
        EXPECT_EQ(authority.questions, 1);
        EXPECT_EQ(world.groups.leftVisible().size(), 2U);
        EXPECT_FALSE(world.list.list->brokenFiles().isNobodyThere());
    }
}

// Whatever may bring an item of an AutoHide group to sight sets the mark, and nothing else does.
TEST_F(GroupHidingTest, MarksThatAutoHideItemsMayBeVisible) {
    struct Row {
        const char* what;
        std::function<void(GroupViewController&, FilesViewController&)> action;
        bool sets;
    };
    const auto file = [](auto& files, std::size_t number) { return files.files().all()[number]; };
    const Row rows[] = {
        {"pass", [](auto& groups, auto&) { groups.autoUnhideThread(); }, true},
        {"group", [](auto& groups, auto&) { groups.unhideGroup(groups.groups()[4], true); }, true},
        {"all", [](auto& groups, auto&) { groups.unhideGroup(groups.groups()[0], true); }, true},
        {"item", [&](auto&, auto& files) { files.unhideFiles({file(files, 0)}, true); }, true},
        {"into the group", [&](auto&, auto& files) { files.moveFiles({file(files, 1)}, 3); }, true},
        {"AutoHide", [](auto& groups, auto&) { groups.setAutoHide(true, "Private Files"); }, true},
        {"another group", [](auto& groups, auto&) { groups.unhideGroup(groups.groups()[2], true); }, false},
        {"another item", [&](auto&, auto& files) { files.hideFiles({file(files, 1)}, true); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        GroupWorld::forgetAll();
        std::filesystem::remove_all(m_tree.path("t"));
        GroupWorld world;
        fill(world, world.started().autoHideGroup(), "t/auto", 1);
        fill(world, world.row(2), "t/other", 1);
        ASSERT_TRUE(world.groups.makeAutoHide("quit"));
        ASSERT_FALSE(world.mark.isSet());
        row.action(world.groups, *world.list.list);
        EXPECT_EQ(world.mark.isSet(), row.sets);
    }
}

} // namespace
} // namespace veilkeep::test
