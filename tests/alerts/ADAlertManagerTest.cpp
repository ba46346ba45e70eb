#include "alerts/ADAlertManager.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

class ADAlertManagerTest : public ::testing::Test {
protected:
    test::ScratchTree m_tree;
    UserDefaults m_defaults{m_tree.path("defaults.plist")};
    test::ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    ADAlertManager m_manager{m_alerts};
};

TEST_F(ADAlertManagerTest, ADecisionThatNobodyTookIsNone) {
    m_presenter.expect(
        {.title = "Recent files list removal.", .whileOpen = [&] { m_alerts.setNobodyThere(true); }});
    EXPECT_TRUE(m_manager.showRecentsAlert().isNull());
    EXPECT_TRUE(m_manager.showRecentsAlert().isNull());
    EXPECT_EQ(m_manager.showOverwriteOriginalAlertForFile("a", "b"), "Cancel");
}

} // namespace
} // namespace veilkeep
