#include "widgets/grouplist/GroupsModel.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <random>

namespace veilkeep::test {
namespace {

TEST(GroupsModelTest, FollowsRandomSteps) {
    const ScratchTree tree;
    GroupWorld world;
    world.started();
    GroupsModel model(world.groups, world.list.list->files());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy resets(&model, &GroupsModel::modelReset);
    GroupViewController& groups = world.groups;
    std::mt19937 random(20261121);
    const auto any = [&](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    for (int step = 0; step < 400; ++step) {
        const std::size_t count = groups.groups().size();
        const ListedGroup group = groups.groups()[any(count)];
        const std::size_t action = any(count < 6 ? 2 : 5);
        if (action <= 1) {
            groups.addGroup();
        } else if (action == 2 && group->canBeRemoved()) {
            world.expectRemoval(group);
            groups.removeGroup(group);
        } else if (action == 3 && !group->isHeaderRow()) {
            groups.setNewName("Step " + std::to_string(step), "", group);
        } else {
            groups.moveGroup(group, any(count));
        }
        ASSERT_EQ(model.rowCount(), static_cast<int>(groups.groups().size()));
        for (int row = 0; row < model.rowCount(); ++row)
            ASSERT_EQ(model.group(model.index(row)), groups.groups()[static_cast<std::size_t>(row)])
                << "step " << step;
    }
    EXPECT_EQ(resets.size(), 0);
}

TEST(GroupsModelTest, CountsItemsAsTheyComeAndGo) {
    const ScratchTree tree;
    GroupWorld world;
    world.started();
    GroupsModel model(world.groups, world.list.list->files());
    QSignalSpy changes(&model, &GroupsModel::dataChanged);
    const auto detail = [&](int row) { return model.index(row).data(GroupsModel::DetailRole).toString(); };
    for (int number = 0; number < 50; ++number)
        world.add(tree.path("item" + std::to_string(number)), world.row(2));
    EXPECT_EQ(changes.size(), 0);
    settle();
    EXPECT_EQ(changes.size(), 2) << "all files and the group, once for all items";
    EXPECT_EQ(detail(0), "50 items");
    EXPECT_EQ(detail(2), "shown · 50 items");
    world.list.list->removeFileFromList(world.list.list->files().all().front());
    settle();
    EXPECT_EQ(detail(2), "shown · 49 items");
}

// What is missing is looked for once, and again after a change.
TEST(GroupsModelTest, FillsAnIconWhenItIsDrawn) {
    const ScratchTree tree;
    GroupWorld world;
    world.images.names.clear();
    world.started();
    GroupsModel model(world.groups, world.list.list->files());
    const auto iconOf = [&](int row) {
        const ListedGroup group = model.groupWithIcon(model.index(row));
        return group ? std::string(group->iconData()) : "no group";
    };
    EXPECT_EQ(iconOf(2), "");
    world.images.names = {"folder-pictures", "folder_private"};
    EXPECT_EQ(iconOf(2), "");
    EXPECT_EQ(iconOf(3), "folder_private");
    world.groups.setAutoHide(true, world.row(2));
    EXPECT_EQ(iconOf(2), "folder-pictures");
    EXPECT_EQ(iconOf(9), "no group");
}

} // namespace
} // namespace veilkeep::test
