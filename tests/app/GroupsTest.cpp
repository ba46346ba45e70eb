#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

using Names = std::vector<std::string>;

class GroupsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.start()); }

    AppWorld world;
};

TEST_F(GroupsTest, KeysAndMenuOfTheWindowHideAndShowTheGroup) {
    const std::string mine = world.addFileToGroup("mine", "Private Files"), other = world.addFile("other");
    world.clickGroup("Private Files");
    const struct {
        const char* what;
        std::function<void()> hide, show;
    } ways[] = {
        {"keys", [] { realInput::key("Ctrl+Shift+Right"); }, [] { realInput::key("Ctrl+Shift+Left"); }},
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
        way.show();
        ASSERT_TRUE(world.isShown(mine));
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
