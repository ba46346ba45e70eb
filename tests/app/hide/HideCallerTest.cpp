#include "app/hide/HideCaller.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace veilkeep::test {
namespace {

class HideCallerTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
    UserDefaults m_defaults{m_tree.path("defaults.plist")};
    ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
};

TEST_F(HideCallerTest, WhatWentWrongIsToldInOneWindow) {
    using Failures = std::vector<std::pair<std::string, QString>>;
    const struct {
        const char* what;
        Failures failed;
        QStringList messages;
        QString title, text; // null: nothing to tell
    } rows[] = {
        {"all well", {}, {}, {}, {}},
        {"one item", {{"/a/b\n", "Gone."}}, {}, "The item “b\\n” could not be hidden.", "Gone."},
        {"one item and a message",
         {{"/a/b", "Gone."}},
         {"Later."},
         "The item “b” could not be hidden.",
         "Gone.\nLater."},
        {"messages", {}, {"First.", "Second."}, "First.", "Second."},
        {"items and a message",
         {{"/a/b", "Gone."}, {"/c", "Busy."}},
         {"Later."},
         "Some errors have been occured while hiding files",
         "Later."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        HideCaller caller(m_alerts);
        for (const auto& [path, reason] : row.failed)
            caller.itemFailed(path, reason);
        for (const QString& message : row.messages)
            caller.message(message);
        if (!row.title.isNull())
            m_presenter.expect({row.title, "OK", row.text});
        caller.tellTroubles();
    }
    ASSERT_EQ(m_presenter.shown().size(), 4U);
    EXPECT_EQ(m_presenter.shown().back().errors, (std::vector<ErrorEntry>{{"b", "Gone."}, {"c", "Busy."}}));
}

TEST_F(HideCallerTest, QuestionsAreAskedUntilTheSessionEnds) {
    HideCaller caller(m_alerts);
    const Question question{"Title", "Message", {"Yes", "No", "Cancel"}};
    m_presenter.expect({"Title", "No", "Message", QStringList{"Yes", "No", "Cancel"}});
    EXPECT_EQ(caller.ask(question), 1U);
    m_presenter.expect({.title = "Title", .whileOpen = [&] { caller.cancelQuestion(); }});
    EXPECT_EQ(caller.ask(question), 2U) << "taken back";
    m_presenter.expect({"Title", "Yes"});
    EXPECT_EQ(caller.ask(question), 0U) << "asked again after that";
    m_presenter.expect({.title = "Title", .whileOpen = [&] { caller.cancel(); }});
    EXPECT_EQ(caller.ask(question), 2U);
    EXPECT_TRUE(caller.isCancelled());
    caller.cancelQuestion();
    EXPECT_EQ(caller.ask(question), 2U) << "nothing is shown any more";
    caller.itemFailed("/a", "Gone.");
    caller.tellTroubles();
}

} // namespace
} // namespace veilkeep::test
