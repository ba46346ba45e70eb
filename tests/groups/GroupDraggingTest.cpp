#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

#include <map>

namespace veilkeep::test {
namespace {

using Operation = DropAnswer::Operation;

// All rows to all places, with their order after it; what is not here is refused.
TEST(GroupDraggingTest, OrdersSixRows) {
    const std::map<std::pair<std::size_t, std::ptrdiff_t>, const char*> orders = {
        {{2, 3}, "ACbcde"}, {{2, 4}, "ACcbde"}, {{2, 5}, "ACcdbe"}, {{2, 6}, "ACcdeb"},
        {{3, 3}, "ACcbde"}, {{3, 4}, "ACbcde"}, {{3, 5}, "ACbdce"}, {{3, 6}, "ACbdec"},
        {{4, 3}, "ACdbce"}, {{4, 4}, "ACbdce"}, {{4, 5}, "ACbcde"}, {{4, 6}, "ACbced"},
        {{5, 3}, "ACebcd"}, {{5, 4}, "ACbecd"}, {{5, 5}, "ACbced"}, {{5, 6}, "ACbcde"},
    };
    const ScratchTree tree;
    GroupWorld first;
    first.started();
    for (const char* name : {"d", "e"})
        first.groups.setNewName(name, "", first.groups.addGroup());
    first.groups.setNewName("b", "", "Secret Pictures");
    first.groups.setNewName("c", "", "Private Files");
    const std::string sixRows = readFile(GroupWorld::dataPath());
    for (std::size_t from = 0; from <= 6; ++from)
        for (std::ptrdiff_t to = -1; to <= 7; ++to) {
            SCOPED_TRACE(::testing::Message() << from << " to " << to);
            writeFile(GroupWorld::dataPath(), sixRows);
            GroupWorld world;
            const ListedGroup moved = from < 6 ? world.started().row(from) : world.started().row(0);
            const GroupDrag drag{.groupRows = std::vector{from}};
            const bool mayBeDragged = from >= 2 && from <= 5, mayDrop = to >= 3 && to <= 6;
            const auto known = orders.find({from, to});
            EXPECT_EQ(world.groups.writeRows({from}), mayBeDragged);
            EXPECT_EQ(world.groups.validateDrop(drag, to).operation,
                      mayDrop ? Operation::Move : Operation::None);
            EXPECT_EQ(world.groups.acceptDrop(drag, to), known != orders.end());
            std::string order;
            for (const std::string& name : world.names())
                order += name.front();
            EXPECT_EQ(order, known == orders.end() ? "ACbcde" : known->second);
            EXPECT_EQ(GroupWorld::savedNames(), world.names());
            EXPECT_EQ(world.groups.currentGroup(), known == orders.end() ? world.row(0) : moved);
        }
    EXPECT_TRUE(first.groups.writeRows({3, 2}));
    for (const std::vector<std::size_t>& rows : {std::vector<std::size_t>{}, {2, 0}, {3, 1}})
        EXPECT_FALSE(first.groups.writeRows(rows));
}

TEST(GroupDraggingTest, TakesFiles) {
    const ScratchTree tree;
    const GroupDrag ours{.filePaths = std::vector{tree.path("a"), tree.path("unknown")},
                         .fileNames = std::vector{tree.path("a")}};
    const GroupDrag others{.fileNames = std::vector{tree.makeFile("new")}};
    GroupWorld world;
    const ListedFile listed = world.add(tree.makeFile("a"), world.started().row(2));
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
    world.groups.selectRow(0);
    world.list.list->filesController().setSelectedObjects({listed});
    world.groups.moveSelectedFiles(world.row(2));
    EXPECT_EQ(listed->groupID(), 1);
    world.groups.moveSelectedFiles(world.row(0));
    EXPECT_EQ(listed->groupID(), CurrentGroup::allFiles);
}

} // namespace
} // namespace veilkeep::test
