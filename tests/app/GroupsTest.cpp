#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

using Names = std::vector<std::string>;

class GroupsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.start()); }

    const Group& group(const std::string& name) { return *world.groups().groupForName(name); }

    AppWorld world;
};

TEST_F(GroupsTest, AreAddedAndRemovedAfterAQuestion) {
    ASSERT_TRUE(world.click("Add a group"));
    ASSERT_TRUE(eventually([&] { return world.groups().ifExistsGroupWithName("New Group"); }));
    EXPECT_FALSE(world.groups().addGroup()->iconData().empty()) << "before it was drawn";
    const std::string path = world.addFileToGroup("letter", "New Group");
    world.clickGroup("New Group");
    EXPECT_TRUE(world.shows({"letter"}));

    world.answer("Are you sure you want to remove \"New Group\" group?", "Cancel");
    ASSERT_TRUE(world.click("Remove the group"));
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(world.groups().ifExistsGroupWithName("New Group"));

    world.answer("Are you sure you want to remove \"New Group\" group?", "Remove");
    world.clickGroup("New Group");
    realInput::key("Delete");
    EXPECT_TRUE(world.areAllAnswered());
    EXPECT_TRUE(eventually([&] { return !world.groups().ifExistsGroupWithName("New Group"); }));
    EXPECT_EQ(world.groups().currentGroupName(), "All Files");
    EXPECT_TRUE(world.shows({"letter"}));
    EXPECT_TRUE(exists(path));
}

TEST_F(GroupsTest, EachWayHidesAndShowsAGroup) {
    const std::string mine = world.addFileToGroup("mine", "Private Files"), other = world.addFile("other");
    world.clickGroup("Private Files");
    const auto bySwitch = [&] { EXPECT_TRUE(world.click("Hide the group")); };
    const struct {
        const char* what;
        std::function<void()> hide, show;
    } ways[] = {
        {"keys", [] { realInput::key("Ctrl+Right"); }, [] { realInput::key("Ctrl+Left"); }},
        {"switch", bySwitch, bySwitch},
        {"keys of the window", [] { realInput::key("Ctrl+Shift+Right"); },
         [] { realInput::key("Ctrl+Shift+Left"); }},
        {"menu bar",
         [&] {
             EXPECT_TRUE(world.choose({"Groups", "Hide Group"}));
         },
         [&] {
             EXPECT_TRUE(world.choose({"Groups", "Unhide Group"}));
         }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.what);
        way.hide();
        ASSERT_TRUE(world.isHidden(mine));
        EXPECT_TRUE(exists(other));
        EXPECT_EQ(group("Private Files").state(), 1);
        way.show();
        ASSERT_TRUE(world.isShown(mine));
        EXPECT_EQ(group("Private Files").state(), 0);
    }
}

TEST_F(GroupsTest, SortByTheMenu) {
    world.addFile("bee", "1");
    world.addFile("ant", "333");
    world.addFile("cow", "22");
    const struct {
        const char* key;
        Names order;
    } rows[] = {{"Name", {"ant", "bee", "cow"}},
                {"Size", {"bee", "cow", "ant"}},
                {"Size", {"ant", "cow", "bee"}}}; // once more turns it round
    for (const auto& row : rows) {
        ASSERT_TRUE(world.choose({"View", "Sort By", row.key}));
        EXPECT_TRUE(world.shows(row.order)) << row.key;
    }
}

} // namespace
} // namespace veilkeep::test
