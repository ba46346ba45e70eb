#include "groups/GroupNames.h"

#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

class GroupRowsTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
};

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

} // namespace
} // namespace veilkeep::test
