#include "alerts/ADAlertManager.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

struct FixedAlert {
    QString title;
    QString message;
    Alert::Style style;
    QStringList buttons;
    QStringList words; // what each button answers
    std::function<QString(ADAlertManager&)> show;
};

const FixedAlert fixedAlerts[] = {
    {"Some %1.",
     "Text %2",
     Alert::Style::Warning,
     {"OK"},
     {""},
     [](ADAlertManager& manager) {
         manager.showGenericError("Some %1.", "Text %2");
         return QString();
     }},
    {"Some items cannot be unhidden.",
     "The item “a%2b” you want to unhide already exists. Do you want to replace or rename it to “c%1d”?",
     Alert::Style::Warning,
     {"Replace", "Rename", "Cancel"},
     {"Replace", "Rename", "Cancel"},
     [](ADAlertManager& manager) { return manager.showOverwriteOriginalAlertForFile("a%2b", "c%1d"); }},
    {"The item you want to hide is in the ‘Open Recent’ list.",
     "The item “a%1b” you want to hide is in the ‘Open Recent’ list of some applications. If you want to "
     "remove "
     "it from that list, please close the applications below before continuing.",
     Alert::Style::Warning,
     {"Continue", "Cancel"},
     {"Continue", "Cancel"},
     [](ADAlertManager& manager) { return manager.showAppForRecentsAlertForFile("a%1b", {"Editor"}); }},
    {"Recent files list removal.",
     "Veilkeep can clean the 'Open Recent' list of some applications and Finder. This will avoid finding "
     "your "
     "files in that list, but the hiding operation will take a bit longer. You can enable/disable this "
     "option in "
     "Veilkeep Preferences.\nWould you like to enable this feature now?",
     Alert::Style::Informational,
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

TEST_F(ADAlertManagerTest, AsksInItsWordsAndAnswersWithAWord) {
    for (const FixedAlert& alert : fixedAlerts)
        for (qsizetype button = 0; button < alert.buttons.size(); ++button) {
            m_presenter.expect({.title = alert.title,
                                .answer = alert.buttons[button],
                                .message = alert.message,
                                .buttons = alert.buttons,
                                .style = alert.style});
            EXPECT_EQ(alert.show(m_manager), alert.words[button]);
        }
    EXPECT_EQ(m_presenter.shown()[5].applications, QStringList("Editor"));
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
