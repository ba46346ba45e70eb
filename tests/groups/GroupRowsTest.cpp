#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

// What is shown goes to the group of all files, whichever group is removed.
TEST(GroupRowsTest, RemovesAGroup) {
    const ScratchTree tree;
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
        const ListedFile first = world.add(tree.path("a"), world.started().row(2));
        const ListedFile second = world.add(tree.path("b"), world.row(3));
        world.groups.selectRow(before);
        ListedFile late;
        int updates = 0;
        QObject::connect(&world.groups, &GroupViewController::GroupsUpdated, [&] { ++updates; });
        world.expectRemoval(world.row(2), answer, [&, selected = during] {
            late = world.add(tree.path("c"), world.row(2));
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
    }
}

} // namespace
} // namespace veilkeep::test
