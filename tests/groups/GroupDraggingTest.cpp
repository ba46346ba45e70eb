#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

using Operation = DropAnswer::Operation;

// The order of "ACSPN" after a row is dropped above another; where it may not be nothing changes.
TEST(GroupDraggingTest, OrdersRows) {
    const struct {
        std::size_t from;
        std::ptrdiff_t to;
        const char* order;
    } rows[] = {
        {2, 3, "ACSPN"}, {2, 4, "ACPSN"}, {2, 5, "ACPNS"}, {3, 3, "ACPSN"},  {4, 3, "ACNSP"}, {4, 4, "ACSNP"},
        {0, 4, nullptr}, {1, 4, nullptr}, {5, 3, nullptr}, {2, -1, nullptr}, {2, 2, nullptr}, {2, 6, nullptr},
    };
    const ScratchTree tree;
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.from << " to " << row.to);
        GroupWorld::forgetAll();
        GroupWorld world;
        world.started().groups.addGroup();
        const GroupDrag drag{.groupRows = std::vector{row.from}};
        EXPECT_EQ(world.groups.writeRows({row.from}), row.from >= 2 && row.from <= 4);
        EXPECT_EQ(world.groups.acceptDrop(drag, row.to), row.order != nullptr);
        std::string order;
        for (const std::string& name : world.names())
            order += name.front();
        EXPECT_EQ(order, row.order ? row.order : "ACSPN");
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
    }
}

TEST(GroupDraggingTest, TakesFiles) {
    const ScratchTree tree;
    const GroupDrag ours{.filePaths = std::vector{tree.path("a"), tree.path("unknown")},
                         .fileNames = std::vector{tree.path("a")}};
    const GroupDrag others{.fileNames = std::vector{tree.makeFile("new")}};
    GroupWorld world;
    world.add(tree.makeFile("a"), world.started().row(2));
    const DropAnswer moves{Operation::Move, 3, true}, copies{Operation::Copy, 3, true};
    EXPECT_EQ(world.groups.validateDrop(ours, 3), moves);
    EXPECT_EQ(world.groups.validateDrop(others, 3), copies);
    for (const std::ptrdiff_t refused : {-1, 1, 4})
        EXPECT_EQ(world.groups.validateDrop(ours, refused), DropAnswer()) << refused;
    world.groups.selectRow(3);
    EXPECT_TRUE(world.groups.acceptDrop(ours, 3));
    EXPECT_TRUE(world.groups.acceptDrop(others, 3));
    EXPECT_FALSE(world.groups.acceptDrop({}, 3));
    world.list.list->waitForAdding();
    ASSERT_EQ(world.list.list->files().size(), 2U);
    for (const ListedFile& file : world.list.list->files().all())
        EXPECT_EQ(file->groupID(), 2) << file->path();
}

} // namespace
} // namespace veilkeep::test
