#include "alerts/Alerts.h"

#include "core/log/Log.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

using test::ScratchTree;
using test::ScriptedPresenter;

class AlertsTest : public ::testing::Test {
protected:
    ScratchTree m_tree;
    const std::string m_defaultsFile = m_tree.path("defaults.plist");
    UserDefaults m_defaults{m_defaultsFile};
    ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
};

TEST_F(AlertsTest, SuppressesNoWarningThatNobodyDecidedUpon) {
    const auto warn = [&](const char* key) {
        return m_alerts.ADRunWarningAlert("Sure?", "Text", "Yes", "No", {}, key);
    };
    m_presenter.expect({.title = "Sure?", .answer = "No"});
    EXPECT_EQ(warn(nullptr), 1001);
    EXPECT_FALSE(m_presenter.shown().back().offersSuppression);
    m_presenter.expect(
        {.title = "Sure?", .suppress = true, .whileOpen = [&] { m_alerts.setNobodyThere(true); }});
    EXPECT_EQ(warn("Other"), 1001);
    EXPECT_FALSE(UserDefaults(m_defaultsFile).boolean("Other").value_or(false));
}

TEST_F(AlertsTest, WhileNobodyIsThereNothingIsShown) {
    m_alerts.setNobodyThere(true);
    EXPECT_EQ(m_alerts.ADRunAlertSheet(Alert::Window::None, "T", "M", "A", "B"), 0);
    EXPECT_EQ(m_alerts.runAlert({}, {"A", "B", "C"}), 1002);
    m_alerts.beginInformationalAlertSheet("Restored", "3 items");
    EXPECT_NE(test::readFile(Log::shared().path()).find("Restored 3 items"), std::string::npos);

    m_alerts.setNobodyThere(false);
    m_presenter.expect({.title = "Restored", .answer = "OK", .message = "3 items"});
    m_alerts.beginInformationalAlertSheet("Restored", "3 items");
}

TEST_F(AlertsTest, LeavingAnswersAllOpenAlertsEvenIfTheUserIsBackAtOnce) {
    m_presenter.expect({.title = "Outer", .whileOpen = [&] {
                            EXPECT_EQ(m_alerts.ADRunAlertSheet(Alert::Window::None, "Inner", {}, "A", "B"),
                                      0);
                        }});
    m_presenter.expect({.title = "Inner", .whileOpen = [&] {
                            m_alerts.setNobodyThere(true);
                            m_alerts.setNobodyThere(false);
                        }});
    EXPECT_EQ(m_alerts.ADRunAlertSheet(Alert::Window::None, "Outer", {}, "A", "B"), 0);
}

} // namespace
} // namespace veilkeep
