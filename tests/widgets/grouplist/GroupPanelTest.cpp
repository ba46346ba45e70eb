#include "tests/widgets/grouplist/PanelWorld.h"
#include "widgets/controls/OnOffSwitch.h"

#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>

namespace veilkeep::test {
namespace {

struct Panel : PanelWorld {
    OnOffSwitch& theSwitch() { return *panel->findChild<OnOffSwitch*>(); }
    QString label() { return panel->findChild<QLabel*>()->text(); }
    QCheckBox& autoHideBox() {
        for (QCheckBox* const box : panel->findChildren<QCheckBox*>())
            if (box != &theSwitch())
                return *box;
        throw std::logic_error("no AutoHide box");
    }
    QToolButton& button(const QString& name) {
        for (QToolButton* const each : panel->findChildren<QToolButton*>())
            if (each->accessibleName() == name)
                return *each;
        throw std::logic_error("no such button");
    }
};

TEST(GroupPanelTest, TheSwitchHidesAGroupsItems) {
    Panel world;
    const std::string mine = world.tree.makeFile("folder/mine"), other = world.tree.makeFile("folder/other");
    world.add(mine, world.row(2));
    world.add(other, world.row(3));
    world.clickRow(2);
    EXPECT_EQ(world.label(), "Shown");
    realInput::click(world.theSwitch());
    EXPECT_FALSE(exists(mine));
    EXPECT_TRUE(exists(other));
    EXPECT_EQ(world.label(), "Hidden");
    EXPECT_EQ(world.row(2)->state(), 1);
    world.clickRow(3);
    EXPECT_EQ(world.theSwitch().value(), OnOffSwitch::Off);
    world.clickRow(2);
    realInput::click(world.theSwitch());
    EXPECT_TRUE(exists(mine));
}

TEST(GroupPanelTest, TheAutoHideBoxIsOfTheSelectedGroup) {
    Panel world;
    EXPECT_FALSE(world.autoHideBox().isVisible());
    world.clickRow(2);
    EXPECT_TRUE(world.autoHideBox().isVisible());
    realInput::click(world.autoHideBox(), QPoint(8, world.autoHideBox().height() / 2));
    EXPECT_EQ(world.row(2)->autoHide(), true);
    world.clickRow(3);
    EXPECT_FALSE(world.autoHideBox().isChecked());
    EXPECT_NE(world.row(3)->autoHide(), true);
    world.clickRow(0);
    EXPECT_FALSE(world.autoHideBox().isVisible());
    EXPECT_EQ(world.row(2)->autoHide(), true);
}

TEST(GroupPanelTest, TheButtonsAddRemoveAndEdit) {
    Panel world;
    QSignalSpy edits(&world.groups, &GroupViewController::editGroupRequested);
    realInput::click(world.button("Add a group"));
    EXPECT_EQ(world.names().back(), "New Group");
    EXPECT_EQ(world.selectedRow(), 0);
    EXPECT_FALSE(world.button("Edit the group").isVisible());
    world.panel->setEditingOffered(true);
    settle();
    EXPECT_FALSE(world.button("Edit the group").isEnabled());
    world.clickRow(4);
    realInput::click(world.button("Edit the group"));
    EXPECT_EQ(edits.size(), 1);
    world.expectRemoval(world.row(4));
    realInput::click(world.button("Remove the group"));
    EXPECT_EQ(world.names().back(), "Private Files");
    world.list.presenter.expect({.title = "Unable to remove group \"All Files\".", .answer = "OK"});
    realInput::click(world.button("Remove the group"));
}

} // namespace
} // namespace veilkeep::test
