#include "tests/app/AppWorld.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

TEST(StartTest, ShowsTheWindowWithTheDefaultGroups) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    EXPECT_EQ(world.groups().groupsNames(),
              (std::vector<std::string>{"All Files", "Secret Pictures", "Private Files", "AutoHide Group"}));
    EXPECT_FALSE(world.app().isStillLaunching());
}

} // namespace
} // namespace veilkeep::test
