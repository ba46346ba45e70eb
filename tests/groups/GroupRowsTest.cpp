#include "groups/GroupNames.h"

#include "core/log/Log.h"
#include "groups/AutoHideVisibleValue.h"
#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

class GroupRowsTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
};

// Made and saved without images, filled by a program that has some.
TEST_F(GroupRowsTest, BeginsWithTheDefaultRows) {
    const char* const plain = "folder-documents_alt";
    const std::tuple<const char*, std::int64_t, const char*, bool, bool, bool> rows[] = {
        {"All Files", 0, plain, false, false, false}, // header, removable, AutoHide
        {"Custom Groups", 0, plain, true, false, false},
        {"Secret Pictures", 1, "folder-pictures", false, true, false},
        {"Private Files", 2, "folder_private", false, true, false},
        {"AutoHide Group", 3, plain, false, true, true},
    };
    {
        GroupWorld first({}, false);
        first.started().groups.makeAutoHideExampleGroup();
        first.groups.setNewName("All Files", "folder_private", "All Files");
    }
    GroupWorld world;
    world.started();
    ASSERT_EQ(world.names().size(), std::size(rows));
    for (std::size_t number = 0; number < std::size(rows); ++number) {
        const auto& [name, id, icon, isHeader, canBeRemoved, autoHide] = rows[number];
        SCOPED_TRACE(name);
        world.groups.fillIcon(world.row(number));
        const Group& group = *world.row(number);
        EXPECT_EQ(group.name(), name);
        EXPECT_EQ(group.groupID(), id);
        EXPECT_EQ(group.iconPath(), icon);
        EXPECT_EQ(group.iconData(), isHeader ? "" : icon);
        EXPECT_EQ(group.canBeRemoved(), canBeRemoved);
        EXPECT_EQ(group.autoHide().value_or(false), autoHide);
        EXPECT_EQ(AutoHideVisibleValue::transformedValue(group.name()), number == 0);
        EXPECT_EQ(world.groups.shouldSelectRow(static_cast<std::ptrdiff_t>(number)), !isHeader);
        EXPECT_EQ(world.groups.heightOfRow(static_cast<std::ptrdiff_t>(number)), isHeader ? 22 : 50);
    }
}

// "+" adds a group, a digit removes that row, "a>b" drags row a to row b.
TEST_F(GroupRowsTest, NamesAndNumbersNewGroups) {
    const std::tuple<std::vector<std::string>, const char*, std::int64_t> rows[] = {
        {{}, "New Group", 3},
        {{"+"}, "New Group 1", 4},
        {{"+", "+"}, "New Group 2", 5},
        {{"+", "+", "4"}, "New Group", 3},
        {{"+", "3"}, "New Group 1", 2},
        {{"+", "4>3"}, "New Group 1", 3}, // 0, 0, 3, 1, 2: a number that is taken
    };
    for (const auto& [steps, name, id] : rows) {
        SCOPED_TRACE(::testing::PrintToString(steps));
        GroupWorld::forgetAll();
        GroupWorld world;
        world.started();
        for (const std::string& step : steps) {
            const auto at = static_cast<std::size_t>(step.front() - '0');
            if (step == "+") {
                world.groups.addGroup();
            } else if (step.size() > 1) {
                ASSERT_TRUE(world.groups.acceptDrop({.groupRows = std::vector{at}}, step.back() - '0'));
            } else {
                world.expectRemoval(world.row(at));
                ASSERT_TRUE(world.groups.removeGroup(world.row(at)));
            }
        }
        const ListedGroup added = world.groups.addGroup();
        EXPECT_EQ(added->name(), name);
        EXPECT_EQ(added->groupID(), id);
        EXPECT_EQ(added->iconPath(), "folder-generic");
        EXPECT_EQ(added->iconData(), "folder-generic.png");
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
    }
}

// What is shown goes to the group of all files, whichever group is removed.
TEST_F(GroupRowsTest, RemovesAGroup) {
    // The rows selected before and during the question, the answer, then the groups of an item of row 2 (as
    // of one that comes during the question) and one of row 3, the row selected.
    const std::tuple<std::ptrdiff_t, std::ptrdiff_t, QString, std::int64_t, std::int64_t, std::size_t>
        rows[] = {{2, 2, "Remove", 0, 2, 0},
                  {3, 3, "Remove", 1, 0, 2},
                  {3, 0, "Remove", 1, 0, 0},
                  {2, 2, "Cancel", 1, 2, 2}};
    for (const auto& [before, during, answer, firstID, secondID, currentAfter] : rows) {
        SCOPED_TRACE(::testing::Message() << before << during << answer.toStdString());
        GroupWorld::forgetAll();
        GroupWorld world;
        const ListedFile first = world.add(m_tree.path("a"), world.started().row(2));
        const ListedFile second = world.add(m_tree.path("b"), world.row(3));
        world.groups.selectRow(before);
        ListedFile late;
        int updates = 0;
        QObject::connect(&world.groups, &GroupViewController::GroupsUpdated, [&] { ++updates; });
        world.expectRemoval(world.row(2), answer, [&, selected = during] {
            late = world.add(m_tree.path("c"), world.row(2));
            world.groups.selectRow(selected);
        });
        world.groups.removeClickedGroupAction(world.row(2));
        EXPECT_EQ(world.names().size(), answer == "Remove" ? 3U : 4U);
        EXPECT_EQ(updates, answer == "Remove");
        EXPECT_EQ(first->groupID(), firstID);
        EXPECT_EQ(late->groupID(), firstID);
        EXPECT_EQ(second->groupID(), secondID);
        EXPECT_EQ(world.groups.rowOf(world.groups.currentGroup()), currentAfter);
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
        world.list.presenter.expect({.title = "Unable to remove group \"All Files\".",
                                     .answer = "OK",
                                     .message = "Sorry, but this group cannot be removed because it contains "
                                                "all of files.",
                                     .style = Alert::Style::Informational});
        EXPECT_FALSE(world.groups.removeGroup(world.row(0)));
    }
}

TEST_F(GroupRowsTest, RenamesAndTakesAnotherIcon) {
    const std::pair<std::string, const char*> rows[] = {
        // icon path and the icon that it has then
        {"folder_private", "folder_private"},
        {m_tree.makeFile("image.png", "an image"), "an image"},
        {m_tree.makeFile("no image.png"), "folder-pictures"},
        {m_tree.path("missing.png"), "folder-pictures"},
    };
    for (const auto& [iconPath, icon] : rows) {
        SCOPED_TRACE(iconPath);
        GroupWorld::forgetAll();
        GroupWorld().started().groups.setNewName("\xFF name", iconPath, "Secret Pictures");
        GroupWorld next;
        const Group& group = *next.started().row(2);
        EXPECT_EQ(group.name(), "\xFF name");
        EXPECT_EQ(group.iconPath(), iconPath);
        EXPECT_EQ(group.iconData(), icon);
        EXPECT_EQ(shownGroupName(group), "\\xff name");
    }
}

// The verb follows the selected group, the name and the rights the clicked one.
TEST_F(GroupRowsTest, ValidatesTheMenu) {
    const std::tuple<int, std::ptrdiff_t, int, QString, bool> rows[] = {
        {3, 0, 0, {}, false},
        {3, 2, 0, {}, true},
        {4, 1, 0, {}, false},
        {6, 0, 0, {}, true},
        {5, -1, 1, {}, false},
        {5, 2, 0, "Hide \"Secret Pictures\" Group", true},
        {5, 2, 1, "Unhide \"Secret Pictures\" Group", true},
    };
    GroupWorld world;
    world.started().groups.selectRow(3);
    for (const auto& [tag, clicked, currentState, title, isEnabled] : rows) {
        world.groups.switchOnOff(currentState);
        const auto item = world.groups.validateMenuItem(tag, world.groups.clickedGroup(clicked));
        EXPECT_EQ(item.title, title) << tag << " " << clicked;
        EXPECT_EQ(item.isEnabled, isEnabled) << tag << " " << clicked;
    }
    EXPECT_NE(
        readFile(Log::shared().path()).find("Can't determine clicked group, clicked row -1 out of bounds"),
        std::string::npos);
}

TEST_F(GroupRowsTest, ShowsTheItemsOfTheSelectedGroup) {
    GroupWorld world;
    const ListedFile mine = world.add(m_tree.path("a"), world.started().row(2));
    world.add(m_tree.path("b"), world.row(3));
    for (const std::ptrdiff_t row : {2, 1, -1, 4})
        world.groups.selectRow(row);
    EXPECT_EQ(world.list.list->getAllFilesOfCurrentGroup(), FilesViewController::Files{mine});
    EXPECT_EQ(world.list.list->numberOfFilesOfCurrentGroup(), 1);
    world.list.list->filesController().setSelectedObjects({mine});
    world.groups.groupTableBecomesFirstResponder();
    EXPECT_TRUE(world.list.list->getAllSelectedFiles().empty());
}

TEST_F(GroupRowsTest, TellsOfEditingAndKeepsStoredCounts) {
    GroupWorld world;
    std::vector<std::string> told;
    const auto note = [&](const std::string& what) { return [&told, what] { told.push_back(what); }; };
    QObject::connect(&world.groups, &GroupViewController::editGroupRequested, note("sheet"));
    QObject::connect(&world.groups, &GroupViewController::GroupsUpdated, note("updated"));
    world.started().groups.editGroup(nullptr);
    world.groups.editGroup(world.row(2));
    world.groups.addGroup();
    EXPECT_EQ(told, (std::vector<std::string>{"sheet", "updated", "updated"}));
    for (const char* const name : {"Private Files", "Private Files", "nobody's"})
        world.groups.incFilesOfGroup(name);
    world.groups.decFilesOfGroup("Private Files");
    EXPECT_EQ(GroupsInfoFile(GroupWorld::dataPath()).load().groups->at(3).countOfFiles(), 1);
}

} // namespace
} // namespace veilkeep::test
