#include "widgets/grouplist/GroupsModel.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <random>
#include <sstream>

namespace veilkeep::test {
namespace {

class WatchedModel {
public:
    explicit WatchedModel(GroupWorld& world)
        : model(world.groups, world.list.list->files()),
          m_tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal) {
        using Model = QAbstractItemModel;
        QObject::connect(&model, &Model::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             told << "c" << first.row() << "-" << last.row() << " ";
                         });
        QObject::connect(&model, &Model::modelReset, [this] { told << "reset "; });
    }

    std::string takeTold() {
        const std::string all = told.str();
        told.str({});
        return all;
    }
    std::vector<ListedGroup> rows() const {
        std::vector<ListedGroup> groups;
        for (int row = 0; row < model.rowCount(); ++row)
            groups.push_back(model.group(model.index(row)));
        return groups;
    }
    QString text(int row, int role = Qt::DisplayRole) const { return model.index(row).data(role).toString(); }

    GroupsModel model;
    std::ostringstream told;

private:
    QAbstractItemModelTester m_tester;
};

TEST(GroupsModelTest, FollowsRandomSteps) {
    const ScratchTree tree;
    GroupWorld world;
    world.started();
    WatchedModel watched(world);
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
        ASSERT_EQ(watched.rows(), groups.groups()) << "step " << step;
    }
    EXPECT_EQ(watched.told.str().find("reset"), std::string::npos);
}

TEST(GroupsModelTest, CountsItemsAsTheyComeAndGo) {
    const ScratchTree tree;
    GroupWorld world;
    world.started();
    WatchedModel watched(world);
    constexpr int detail = GroupsModel::DetailRole;
    for (int number = 0; number < 50; ++number)
        world.add(tree.path("item" + std::to_string(number)), world.row(2));
    const ListedFile last = world.add(tree.path("last"), world.row(3));
    EXPECT_EQ(watched.takeTold(), "");
    settle();
    EXPECT_EQ(watched.takeTold(), "c0-0 c2-3 ");
    EXPECT_EQ(watched.text(0, detail), "51 items");
    EXPECT_EQ(watched.text(2, detail), "shown · 50 items");
    EXPECT_EQ(watched.text(3, detail), "shown · 1 item");
    world.list.list->removeFileFromList(last);
    settle();
    EXPECT_EQ(watched.takeTold(), "c0-0 c3-3 ");
    EXPECT_EQ(watched.text(3, detail), "shown · 0 items");
}

// What is missing is looked for once, and again after a change.
TEST(GroupsModelTest, FillsAnIconWhenItIsDrawn) {
    const ScratchTree tree;
    GroupWorld world;
    world.images.names.clear();
    world.started();
    WatchedModel watched(world);
    const auto iconOf = [&](int row) {
        const ListedGroup group = watched.model.groupWithIcon(watched.model.index(row));
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
