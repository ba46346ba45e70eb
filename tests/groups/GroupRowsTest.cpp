#include "groups/GroupNames.h"

#include "core/log/Log.h"
#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

class GroupRowsTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
};

TEST_F(GroupRowsTest, BeginsWithTheDefaultRows) {
    struct Row {
        const char* name;
        std::optional<std::int64_t> id;
        const char *iconPath, *icon;
        bool isHeader, canBeRemoved, autoHide;
    };
    const Row rows[] = {
        {"All Files", 0, "folder-documents_alt", "folder-documents_alt", false, false, false},
        {"Custom Groups", 0, "folder-documents_alt", "", true, false, false},
        {"Secret Pictures", 1, "folder-pictures", "folder-pictures", false, true, false},
        {"Private Files", 2, "folder_private", "folder_private", false, true, false},
        {"AutoHide Group", 3, "folder-documents_alt", "folder-documents_alt", false, true, true},
    };
    for (const bool withImages : {true, false}) {
        GroupWorld::forgetAll();
        GroupWorld world({}, withImages);
        world.started().groups.makeAutoHideExampleGroup();
        GroupWorld next({}, withImages);
        for (GroupWorld* each : {&world, &next.started()}) {
            ASSERT_EQ(each->groups.groups().size(), std::size(rows));
            for (std::size_t number = 0; number < std::size(rows); ++number) {
                SCOPED_TRACE(rows[number].name);
                const Row& row = rows[number];
                const Group& group = *each->row(number);
                EXPECT_EQ(group.name(), row.name);
                EXPECT_EQ(group.groupID(), row.id);
                EXPECT_EQ(group.iconPath(), row.iconPath);
                EXPECT_EQ(group.iconData(), withImages ? row.icon : "");
                EXPECT_EQ(group.isHeaderRow(), row.isHeader);
                EXPECT_EQ(group.canBeRemoved(), row.canBeRemoved);
                EXPECT_EQ(group.autoHide().value_or(false), row.autoHide);
                EXPECT_EQ(each->groups.shouldSelectRow(static_cast<std::ptrdiff_t>(number)), !row.isHeader);
                EXPECT_EQ(each->groups.heightOfRow(static_cast<std::ptrdiff_t>(number)),
                          row.isHeader ? 22 : 50);
            }
            EXPECT_EQ(each->groups.currentGroup(), each->row(0));
        }
        EXPECT_EQ(world.groups.groupsNames(), (std::vector<std::string>{"All Files", "Secret Pictures",
                                                                        "Private Files", "AutoHide Group"}));
    }
}

// The steps are one letter each: "+" adds a group, a digit removes that row, "a>b" drags row a to b.
TEST_F(GroupRowsTest, NamesAndNumbersNewGroups) {
    struct Row {
        std::vector<std::string> steps;
        std::string name;
        std::int64_t id;
    };
    const Row rows[] = {
        {{}, "New Group", 3},
        {{"+"}, "New Group 1", 4},
        {{"+", "+"}, "New Group 2", 5},
        {{"+", "+", "4"}, "New Group", 3},
        {{"+", "3"}, "New Group 1", 2},
        {{"+", "4>3"}, "New Group 1", 3}, // 0, 0, 3, 1, 2: a number that is taken
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.steps));
        GroupWorld::forgetAll();
        GroupWorld world;
        world.started();
        for (const std::string& step : row.steps) {
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
        SignalCount updated(&world.groups, &GroupViewController::GroupsUpdated);
        const ListedGroup added = world.groups.addGroup();
        EXPECT_EQ(added->name(), row.name);
        EXPECT_EQ(added->groupID(), row.id);
        EXPECT_EQ(added->iconPath(), "folder-generic");
        EXPECT_EQ(added->iconData(), "folder-generic.png");
        EXPECT_EQ(updated.size(), 1);
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
    }
}

// What is shown goes to the group of all files, whichever group is removed.
TEST_F(GroupRowsTest, RemovesAGroup) {
    struct Row {
        std::size_t current, removed;
        QString title, message, answer;
        std::int64_t first, second; // the groups of an item of row 2 and one of row 3 after it
        std::size_t currentAfter;
    };
    const QString sure = "Are you sure you want to remove \"Secret Pictures\" group?";
    const QString moved = "All files of this group will be moved to the \"All Files\" group.";
    const Row rows[] = {
        {2, 2, sure, moved, "Remove", 0, 2, 0},
        {3, 2, sure, moved, "Remove", 1, 0, 2},
        {2, 2, sure, moved, "Cancel", 1, 2, 2},
        {2, 0, "Unable to remove group \"All Files\".",
         "Sorry, but this group cannot be removed because it contains all of files.", "OK", 1, 2, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.current << row.removed << row.answer.toStdString());
        GroupWorld::forgetAll();
        GroupWorld world;
        world.started();
        const ListedFile first = world.add(m_tree.path("a"), world.row(2));
        const ListedFile second = world.add(m_tree.path("b"), world.row(3));
        world.groups.selectRow(static_cast<std::ptrdiff_t>(row.current));
        SignalCount updated(&world.groups, &GroupViewController::GroupsUpdated);
        const bool removes = row.answer == "Remove";
        world.list.presenter.expect(
            {.title = row.title,
             .answer = row.answer,
             .message = row.message,
             .buttons = row.removed == 0 ? QStringList{"OK"} : QStringList{"Remove", "Cancel"},
             .style = row.removed == 0 ? Alert::Style::Informational : Alert::Style::Critical});
        const ListedGroup group = world.row(row.removed);
        world.groups.removeClickedGroupAction(group);
        EXPECT_EQ(world.groups.rowOf(group).has_value(), !removes);
        EXPECT_EQ(first->groupID(), row.first);
        EXPECT_EQ(second->groupID(), row.second);
        EXPECT_EQ(updated.size(), removes);
        EXPECT_EQ(world.groups.rowOf(world.groups.currentGroup()), row.currentAfter);
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
    }
}

TEST_F(GroupRowsTest, RenamesAndTakesAnotherIcon) {
    struct Row {
        std::string iconPath, icon; // the icon that it has then
    };
    m_tree.makeFile("folder_private", "not the program's own");
    const Row rows[] = {
        {"folder_private", "folder_private"},
        {m_tree.makeFile("image.png", "an image"), "an image"},
        {m_tree.makeFile("empty.png"), "folder-pictures"},
        {m_tree.path("missing.png"), "folder-pictures"},
        {"", "folder-pictures"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.iconPath);
        GroupWorld::forgetAll();
        {
            GroupWorld world;
            world.started().groups.setNewName("\xFF name", row.iconPath, "Secret Pictures");
            world.groups.setNewName("nobody", row.iconPath, "Secret Pictures");
        }
        GroupWorld next;
        const Group& group = *next.started().row(2);
        EXPECT_EQ(group.name(), "\xFF name");
        EXPECT_EQ(group.iconPath(), row.iconPath);
        EXPECT_EQ(group.iconData(), row.icon);
        EXPECT_EQ(shownGroupName(group), "\\xff name");
        EXPECT_EQ(next.names().size(), 4U);
    }
}

TEST_F(GroupRowsTest, FillsAnIconThatWasLeftEmpty) {
    GroupWorld({}, false).started();
    GroupWorld world;
    world.started().groups.fillIcon(world.row(2));
    EXPECT_EQ(world.row(2)->iconData(), "folder-pictures");
}

// The verb follows the selected group, the name and the rights the clicked one.
TEST_F(GroupRowsTest, ValidatesTheMenu) {
    struct Row {
        int tag;
        std::ptrdiff_t clicked;
        bool isCurrentHidden;
        QString title; // null: as it is
        bool isEnabled;
    };
    const Row rows[] = {
        {3, 0, false, {}, false},
        {3, 2, false, {}, true},
        {4, 0, false, {}, false},
        {4, 3, false, {}, true},
        {4, 1, false, {}, false},
        {6, 0, false, {}, true},
        {6, 9, false, {}, false},
        {5, -1, true, {}, false},
        {5, 2, false, "Hide \"Secret Pictures\" Group", true},
        {5, 2, true, "Unhide \"Secret Pictures\" Group", true},
    };
    GroupWorld world;
    world.started().groups.selectRow(3);
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.tag << " " << row.clicked);
        world.groups.switchOnOff(row.isCurrentHidden);
        const auto item = world.groups.validateMenuItem(row.tag, world.groups.clickedGroup(row.clicked));
        EXPECT_EQ(item.title, row.title);
        EXPECT_EQ(item.title.isNull(), row.title.isNull());
        EXPECT_EQ(item.isEnabled, row.isEnabled);
    }
    const std::string log = readFile(Log::shared().path());
    EXPECT_NE(log.find("Can't determine clicked group, clicked row -1 out of bounds"), std::string::npos);
    EXPECT_NE(log.find("Can't determine clicked group, clicked row 9 out of bounds"), std::string::npos);
}

TEST_F(GroupRowsTest, ShowsTheItemsOfTheSelectedGroup) {
    GroupWorld world;
    world.started();
    const ListedFile mine = world.add(m_tree.path("a"), world.row(2));
    const ListedFile other = world.add(m_tree.path("b"), world.row(3));
    SignalCount counted(world.list.list.get(), &FilesViewController::numberOfFilesOfCurrentGroupChanged);
    world.list.list->filterController().setSearchText("b");
    world.groups.selectRow(2);
    EXPECT_EQ(world.list.list->getAllFilesOfCurrentGroup(), FilesViewController::Files{mine});
    EXPECT_EQ(world.list.list->numberOfFilesOfCurrentGroup(), 1);
    EXPECT_EQ(counted.size(), 1);
    for (const std::ptrdiff_t row : {1, -1, 4})
        world.groups.selectRow(row);
    EXPECT_EQ(world.groups.currentGroupName(), "Secret Pictures");
    EXPECT_EQ(world.groups.currentGroupID(), 1);
    world.list.list->filesController().setSelectedObjects({mine});
    world.groups.groupTableBecomesFirstResponder();
    EXPECT_TRUE(world.list.list->getAllSelectedFiles().empty());
    EXPECT_EQ(counted.size(), 2);
    world.groups.selectRow(0);
    EXPECT_EQ(world.list.list->getAllFilesOfCurrentGroup(), (FilesViewController::Files{mine, other}));
}

} // namespace
} // namespace veilkeep::test
