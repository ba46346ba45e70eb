#include "tests/support/gui/DragSource.h"
#include "tests/widgets/grouplist/PanelWorld.h"
#include "widgets/controls/DragMime.h"
#include "widgets/grouplist/GroupDelegate.h"

#include <QLineEdit>
#include <QSignalSpy>

namespace veilkeep::test {
namespace {

// --- Selecting ---

TEST(GroupsViewTest, SelectsGroupsAndNothingElse) {
    PanelWorld world;
    EXPECT_EQ(world.selectedRow(), 0);
    const std::pair<const char*, int> keys[] = {{"Down", 2}, {"End", 3}, {"Down", 3},
                                                {"Up", 2},   {"Up", 0},  {"p", 3}};
    for (const auto& [key, row] : keys) {
        realInput::key(key);
        EXPECT_EQ(world.selectedRow(), row) << key;
        EXPECT_EQ(world.groups.currentGroup(), world.row(static_cast<std::size_t>(row))) << key;
    }
    world.clickRow(3);
    EXPECT_EQ(world.groups.currentGroup(), world.row(3));
    world.clickRow(1);
    realInput::click(*world.view->viewport(), QPoint(50, 400));
    world.clickRow(2, Qt::RightButton);
    realInput::key("Escape");
    EXPECT_EQ(world.selectedRow(), 3);
    world.groups.selectRow(2);
    const ListedGroup added = world.groups.addGroup();
    world.groups.moveGroup(added, 2);
    EXPECT_EQ(world.selectedRow(), 3);
    EXPECT_EQ(world.groups.currentGroupName(), "Secret Pictures");
}

TEST(GroupsViewTest, TakingTheFocusUnselectsTheItems) {
    PanelWorld world;
    FilesController& files = world.list.list->filesController();
    files.setSelectedObjects({world.list.add(world.tree.makeFile("item"))});
    QSignalSpy toFiles(world.panel.get(), &GroupPanel::rightKeyPressed);
    realInput::key("Right");
    EXPECT_EQ(toFiles.size(), 1);
    realInput::key("Tab");
    ASSERT_FALSE(world.view->hasFocus());
    EXPECT_EQ(files.selectedObjects().size(), 1U);
    world.clickRow(0);
    EXPECT_TRUE(files.selectedObjects().empty());
}

// --- Keys and menu ---

TEST(GroupsViewTest, TheMenuActsOnTheRowThatWasClicked) {
    PanelWorld world;
    const std::string path = world.tree.makeFile("folder/item");
    world.groups.setNewName("Tom & Jerry", "", world.row(3));
    world.add(path, world.row(3));
    world.clickRow(3, Qt::RightButton);
    ASSERT_TRUE(world.menu());
    EXPECT_EQ(world.selectedRow(), 0);
    EXPECT_FALSE(world.menuItem(GroupViewController::Edit));
    EXPECT_TRUE(world.menuItem(GroupViewController::Remove)->isEnabled());
    EXPECT_EQ(world.menuItem(GroupViewController::HideUnhide)->text(), "Hide \"Tom && Jerry\" Group");
    world.clickMenuItem(world.menuItem(GroupViewController::HideUnhide));
    EXPECT_TRUE(eventually([&] { return !exists(path); }));
    EXPECT_EQ(world.row(3)->state(), 1);
    EXPECT_EQ(world.row(0)->state(), 0);
    world.clickRow(1, Qt::RightButton);
    EXPECT_FALSE(world.menu());
}

TEST(GroupsViewTest, TheEditButtonIsThereWhileEditingIsOffered) {
    PanelWorld world;
    QSignalSpy edits(&world.groups, &GroupViewController::editGroupRequested);
    const auto clickButton = [&](int row) {
        const QRect rect = world.view->visualRect(world.view->model()->index(row, 0));
        realInput::click(*world.view->viewport(),
                         GroupDelegate::editButtonRect(rect, Qt::LeftToRight).center());
    };
    clickButton(3);
    EXPECT_EQ(edits.size(), 0);
    EXPECT_EQ(world.selectedRow(), 3);
    world.panel->setEditingOffered(true);
    clickButton(2);
    clickButton(0);
    ASSERT_EQ(edits.size(), 1);
    EXPECT_EQ(edits.front().front().value<ListedGroup>(), world.row(2));
    EXPECT_EQ(world.selectedRow(), 0);
}

// --- Names in their places ---

struct NameWorld : PanelWorld {
    NameWorld() {
        panel->setEditingOffered(true);
        clickRow(3);
        groups.setNewName("Mine", "", row(3));
    }
    QLineEdit* field() { return view->findChild<QLineEdit*>(); }
    void edit() {
        realInput::key("F2");
        EXPECT_TRUE(eventually([this] { return field() && field()->hasFocus(); }));
    }
    bool isClosed() {
        return eventually([this] { return !field(); }) && view->hasFocus();
    }
};

TEST(GroupsViewTest, NamesAreEditedInTheirPlaces) {
    NameWorld world;
    const ListedGroup group = world.row(3);
    const struct {
        const char* what;
        std::function<void()> steps;
        const char* name;
    } rows[] = {
        {"Escape", [] { realInput::type("zzz"), realInput::key("Escape"); }, "Mine"},
        {"Return", [] { realInput::type("first"), realInput::key("Return"); }, "first"},
        {"another row", [&] { realInput::type("third"), world.clickRow(2), world.clickRow(3); }, "third"},
        {"what changes meanwhile takes nothing away",
         [&] {
             realInput::type("fourth");
             world.groups.setAutoHide(true, group);
             settle();
             realInput::key("Return");
         },
         "fourth"},
        {"the form is asked for", [&] { realInput::type("fifth"), world.groups.editGroup(group); }, "fifth"},
    };
    for (const auto& row : rows) {
        world.edit();
        EXPECT_EQ(world.field()->selectedText().toStdString(), group->name()) << row.what;
        row.steps();
        EXPECT_TRUE(world.isClosed()) << row.what;
        EXPECT_EQ(group->name(), row.name) << row.what;
        EXPECT_EQ(GroupWorld::savedNames(), world.names()) << row.what;
    }
    world.clickRow(0);
    realInput::key("F2");
    EXPECT_TRUE(world.isClosed()) << "all files keep their name";
    world.clickRow(3);
    world.edit();
    realInput::type("sixth");
    world.panel->hide();
    EXPECT_TRUE(eventually([&] { return !world.field(); }));
    EXPECT_EQ(group->name(), "fifth");
}

TEST(GroupsViewTest, ANameThatIsRefusedStaysToBePutRight) {
    NameWorld world;
    const auto expectMessage = [&] {
        world.list.presenter.expect({.title = "A group with this name exists already.", .answer = "OK"});
    };
    world.groups.setNewName("taken", "", world.row(2));
    world.edit();
    realInput::type("taken");
    expectMessage();
    realInput::key("Return");
    settle();
    ASSERT_TRUE(world.field() && world.field()->hasFocus());
    EXPECT_EQ(world.field()->text(), "taken");
    expectMessage(); // once, though the selection changes too
    world.clickRow(2);
    EXPECT_TRUE(eventually([&] { return world.field() && world.field()->hasFocus(); }));
    EXPECT_EQ(world.row(3)->name(), "Mine");
    realInput::type("free");
    realInput::key("Return");
    EXPECT_TRUE(world.isClosed());
    EXPECT_EQ(world.row(3)->name(), "free");
}

TEST(GroupsViewTest, WhatWasTypedGoesOnInTheForm) {
    NameWorld world;
    QSignalSpy forms(&world.groups, &GroupViewController::editCellRequested);
    world.edit();
    realInput::type("trip");
    realInput::key("Ctrl+E");
    ASSERT_EQ(forms.size(), 1);
    EXPECT_EQ(forms.front().at(0).value<ListedGroup>(), world.row(3));
    EXPECT_EQ(forms.front().at(1).toString(), "trip");
    EXPECT_TRUE(world.isClosed());
    EXPECT_EQ(world.row(3)->name(), "Mine");
}

// --- Dragging ---

TEST(GroupsViewTest, RowsAreDraggedToAnotherPlace) {
    PanelWorld world;
    realInput::drag(world.onScreen(2), world.onScreen(3, 12));
    settle();
    EXPECT_EQ(world.names().back(), "Secret Pictures");
    EXPECT_EQ(GroupWorld::savedNames(), world.names());
}

TEST(GroupsViewTest, RowsAreMovedByKeys) {
    PanelWorld world;
    const auto before = world.names();
    const auto swapped =
        std::vector<std::string>{"All Files", "Custom Groups", "Private Files", "Secret Pictures"};
    realInput::key("Alt+Down"); // all files stay
    EXPECT_EQ(world.names(), before);
    world.clickRow(2);
    const std::pair<const char*, std::vector<std::string>> steps[] = {
        {"Alt+Up", before}, {"Alt+Down", swapped}, {"Alt+Down", swapped}, {"Alt+Up", before}};
    for (const auto& [key, names] : steps) {
        realInput::key(key);
        EXPECT_EQ(world.names(), names) << key;
        EXPECT_EQ(world.groups.currentGroupName(), "Secret Pictures") << key;
    }
}

TEST(GroupsViewTest, ItemsAreDroppedOnAGroup) {
    PanelWorld world;
    const std::string path = world.tree.makeFile("item");
    const ListedFile item = world.list.add(path);
    const auto fill = [&](QMimeData& data) {
        dragMime::setPaths(data, {path});
        dragMime::setFileNames(data, {path});
    };
    EXPECT_EQ(dragTo(world.onScreen(1), DragSource(fill)), Qt::IgnoreAction);
    EXPECT_EQ(dragTo(world.onScreen(3, 150), DragSource(fill)), Qt::IgnoreAction);
    EXPECT_EQ(item->groupID(), 0);
    EXPECT_EQ(dragTo(world.onScreen(3), DragSource(fill)), Qt::MoveAction);
    EXPECT_TRUE(eventually([&] { return item->groupID() == world.row(3)->groupID(); }));
    EXPECT_EQ(world.selectedRow(), 3);
    EXPECT_EQ(world.list.list->files().size(), 1U);
}

} // namespace
} // namespace veilkeep::test
