#include "tests/app/process/ProcessWorld.h"

#include <signal.h>

namespace veilkeep::test {
namespace {

class HideTest : public ProcessWorld {
protected:
    const std::string m_item = m_tree.makeFile("Docs/a.txt", "content");
};

// Whoever owns the list does the work, and this process where nobody does.
TEST_F(HideTest, HidesWithAndWithoutAnApplication) {
    EXPECT_EQ(run({"--hide", m_item}).exitStatus, 0);
    EXPECT_FALSE(exists(m_item));
    EXPECT_EQ(listed(), "hidden\t" + m_item + "\n");
    const std::string other = m_tree.makeFile("Docs/b.txt", "content");
    ASSERT_TRUE(startToWindow());
    EXPECT_EQ(run({"--hide", other}).exitStatus, 0);
    EXPECT_FALSE(exists(other));
    EXPECT_EQ(end(SIGTERM), 0);
}

TEST_F(HideTest, WhatCannotBeHiddenIsSaidInAWindow) {
    start({"--hide", m_item, m_tree.path("Docs/gone")});
    ASSERT_TRUE(waitUntil([this] { return windowCount() > 0; }));
    EXPECT_FALSE(exists(m_item)) << "the rest is hidden all the same";
    EXPECT_EQ(end(SIGTERM), 1) << "some failed";
}

} // namespace
} // namespace veilkeep::test
