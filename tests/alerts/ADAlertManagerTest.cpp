#include "alerts/ADAlertManager.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

const struct {
    QString title;
    QStringList buttons;
    QStringList words; // what each button answers
    std::function<QString(ADAlertManager&)> show;
} fixedAlerts[] = {
    {"Some items cannot be unhidden.",
     {"Replace", "Rename", "Cancel"},
     {"Replace", "Rename", "Cancel"},
     [](ADAlertManager& manager) { return manager.showOverwriteOriginalAlertForFile("a%2b", "c%1d"); }},
    {"The item you want to hide is in the ‘Open Recent’ list.",
     {"Continue", "Cancel"},
     {"Continue", "Cancel"},
     [](ADAlertManager& manager) { return manager.showAppForRecentsAlertForFile("a%1b", {"Editor"}); }},
    {"Recent files list removal.",
     {"Remove Recents", "Don't Remove Recents"},
     {"Yes", "No"},
     [](ADAlertManager& manager) { return manager.showRecentsAlert(); }},
};

class ADAlertManagerTest : public ::testing::Test {
protected:
    test::ScratchTree m_tree;
    UserDefaults m_defaults{m_tree.path("defaults.plist")};
    test::ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    ADAlertManager m_manager{m_alerts};
};

TEST_F(ADAlertManagerTest, AsksAndAnswersWithAWord) {
    for (const auto& alert : fixedAlerts)
        for (qsizetype button = 0; button < alert.buttons.size(); ++button) {
            m_presenter.expect(
                {.title = alert.title, .answer = alert.buttons[button], .buttons = alert.buttons});
            EXPECT_EQ(alert.show(m_manager), alert.words[button]);
        }
    EXPECT_TRUE(m_presenter.shown()[0].message.contains("“a%2b”"));
    EXPECT_TRUE(m_presenter.shown()[0].message.contains("“c%1d”"));
    EXPECT_EQ(m_presenter.shown()[4].applications, QStringList("Editor"));
}

TEST_F(ADAlertManagerTest, ADecisionThatNobodyTookIsNone) {
    m_presenter.expect(
        {.title = "Recent files list removal.", .whileOpen = [&] { m_alerts.setNobodyThere(true); }});
    EXPECT_TRUE(m_manager.showRecentsAlert().isNull());
    EXPECT_TRUE(m_manager.showRecentsAlert().isNull());
    EXPECT_EQ(m_manager.showOverwriteOriginalAlertForFile("a", "b"), "Cancel");
}

} // namespace
} // namespace veilkeep
