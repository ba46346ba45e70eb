#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

#include <QEventLoop>

#include <map>

namespace veilkeep::test {
namespace {

using Operation = DropAnswer::Operation;

class GroupDraggingTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
};

// All rows to all places, with their order after it; what is not here is refused.
TEST_F(GroupDraggingTest, OrdersSixRows) {
    const std::map<std::pair<std::size_t, std::ptrdiff_t>, const char*> orders = {
        {{2, 3}, "ACbcde"}, {{2, 4}, "ACcbde"}, {{2, 5}, "ACcdbe"}, {{2, 6}, "ACcdeb"},
        {{3, 3}, "ACcbde"}, {{3, 4}, "ACbcde"}, {{3, 5}, "ACbdce"}, {{3, 6}, "ACbdec"},
        {{4, 3}, "ACdbce"}, {{4, 4}, "ACbdce"}, {{4, 5}, "ACbcde"}, {{4, 6}, "ACbced"},
        {{5, 3}, "ACebcd"}, {{5, 4}, "ACbecd"}, {{5, 5}, "ACbced"}, {{5, 6}, "ACbcde"},
    };
    std::string sixRows;
    {
        GroupWorld world;
        world.started();
        for (const char* name : {"d", "e"})
            world.groups.setNewName(name, "", world.groups.addGroup());
        world.groups.setNewName("b", "", "Secret Pictures");
        world.groups.setNewName("c", "", "Private Files");
        sixRows = readFile(GroupWorld::dataPath());
    }
    for (std::size_t from = 0; from <= 6; ++from)
        for (std::ptrdiff_t to = -1; to <= 7; ++to) {
            SCOPED_TRACE(::testing::Message() << from << " to " << to);
            writeFile(GroupWorld::dataPath(), sixRows);
            GroupWorld world;
            world.started();
            const GroupDrag drag{.groupRows = std::vector<std::size_t>{from}};
            const ListedGroup moved = from < 6 ? world.row(from) : nullptr;
            const bool mayBeDragged = from >= 2 && from <= 5, mayDrop = to >= 3 && to <= 6;
            EXPECT_EQ(world.groups.writeRows({from}), mayBeDragged);
            EXPECT_EQ(
                world.groups.validateDrop(drag, to),
                (mayDrop ? DropAnswer{Operation::Move, static_cast<std::size_t>(to), false} : DropAnswer{}));
            EXPECT_EQ(world.groups.acceptDrop(drag, to), mayBeDragged && mayDrop);
            const auto known = orders.find({from, to});
            std::string order;
            for (const std::string& name : world.names())
                order += name.front();
            EXPECT_EQ(order, known == orders.end() ? "ACbcde" : known->second);
            EXPECT_EQ(GroupWorld::savedNames(), world.names());
            EXPECT_EQ(world.groups.currentGroup(), known == orders.end() ? world.row(0) : moved);
        }
}

TEST_F(GroupDraggingTest, DragsNoneOfTheFirstRowsAlongWithOthers) {
    GroupWorld world;
    world.started();
    EXPECT_TRUE(world.groups.writeRows({3, 2}));
    for (const std::vector<std::size_t>& rows : {std::vector<std::size_t>{}, {2, 0}, {3, 1}, {0, 1, 2}, {9}})
        EXPECT_FALSE(world.groups.writeRows(rows)) << ::testing::PrintToString(rows);
}

TEST_F(GroupDraggingTest, TakesFiles) {
    const GroupDrag ours{.filePaths = std::vector<std::string>{m_tree.path("a"), m_tree.path("unknown")},
                         .fileNames = std::vector<std::string>{m_tree.path("a")}};
    const GroupDrag others{.fileNames = std::vector<std::string>{m_tree.makeFile("new")}};
    struct Row {
        GroupDrag drag;
        std::ptrdiff_t row;
        DropAnswer answer;
    };
    const Row rows[] = {
        {ours, 3, {Operation::Move, 3, true}},
        {others, 3, {Operation::Copy, 3, true}},
        {ours, 0, {Operation::Move, 0, true}},
        {ours, 1, {}},
        {others, 1, {}},
        {ours, -1, {}},
        {others, 4, {}},
        {{}, 3, {}},
    };
    GroupWorld world;
    world.started();
    const ListedFile listed = world.add(m_tree.makeFile("a"), world.row(2));
    for (const Row& row : rows)
        EXPECT_EQ(world.groups.validateDrop(row.drag, row.row), row.answer) << row.row;

    world.groups.selectRow(3);
    EXPECT_TRUE(world.groups.acceptDrop(ours, 3));
    EXPECT_EQ(listed->groupID(), 2);
    EXPECT_TRUE(world.groups.acceptDrop(others, 3));
    world.list.list->waitForAdding();
    ASSERT_EQ(world.list.list->files().size(), 2U);
    EXPECT_EQ(world.list.list->files().all().back()->groupID(), 2);
    EXPECT_FALSE(world.groups.acceptDrop({}, 3));
}

} // namespace
} // namespace veilkeep::test
