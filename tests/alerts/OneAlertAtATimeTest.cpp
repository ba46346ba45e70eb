#include "alerts/Alerts.h"
#include "alerts/OneAlertLock.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

namespace veilkeep {
namespace {

// Alerts that threads raise while the main thread shows them.
class OneAlertAtATimeTest : public ::testing::Test {
protected:
    int ask(const QString& title) {
        return m_alerts.ADRunAlertSheet(Alert::Window::None, title, {}, "Go on", "Cancel");
    }
    std::future<int> askOnAThread(const QString& title) {
        return std::async(std::launch::async, [this, title] {
            ++m_asking;
            return ask(title);
        });
    }
    static bool isReady(const std::future<int>& answer) {
        return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
    int answerOf(std::future<int>& answer) { // while the event loop turns
        EXPECT_TRUE(test::waitUntil([&] { return m_presenter.serveOthers(), isReady(answer); }));
        return answer.get();
    }

    test::ScratchTree m_tree;
    UserDefaults m_defaults{m_tree.path("defaults.plist")};
    test::ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    std::atomic<int> m_asking = 0;
};

TEST_F(OneAlertAtATimeTest, TheMainThreadShowsAnothersAlertWhileItWaits) {
    // The other thread has the lock and waits for the main thread, which asks for something itself.
    m_presenter.expect({.title = "Thread", .answer = "Go on"});
    m_presenter.expect({.title = "Main", .answer = "Cancel"});
    const auto& lock = OneAlertLock::onlyOneAlertSheetAtATimeLock();
    std::future<int> thread = askOnAThread("Thread");
    ASSERT_TRUE(test::waitUntil([&] { return lock.isTaken(); }));
    EXPECT_EQ(ask("Main"), 0);
    EXPECT_EQ(answerOf(thread), 1);
}

TEST_F(OneAlertAtATimeTest, WhoShowsAnothersAlertMayAskMeanwhile) {
    m_presenter.expect(
        {.title = "Thread", .answer = "Go on", .whileOpen = [&] { EXPECT_EQ(ask("Main"), 1); }});
    m_presenter.expect({.title = "Main", .answer = "Go on"});
    std::future<int> thread = askOnAThread("Thread");
    EXPECT_EQ(answerOf(thread), 1);
}

TEST_F(OneAlertAtATimeTest, LeavingLetsEveryThreadThrough) {
    std::future<int> waiting;
    m_presenter.expect({.title = "First", .whileOpen = [&] {
                            waiting = askOnAThread("Second");
                            EXPECT_TRUE(test::waitUntil([&] { return m_asking == 2; }));
                            m_alerts.setNobodyThere(true);
                            EXPECT_EQ(waiting.get(), 0); // though the first one still holds the lock
                            m_alerts.setNobodyThere(false);
                        }});
    std::future<int> first = askOnAThread("First");
    EXPECT_EQ(answerOf(first), 0);
}

TEST_F(OneAlertAtATimeTest, WhatWasAskedBeforeLeavingIsNotShownLater) {
    const auto& lock = OneAlertLock::onlyOneAlertSheetAtATimeLock();
    std::future<int> thread = askOnAThread("Thread"); // taken, but the main thread has not come to show it
    ASSERT_TRUE(test::waitUntil([&] { return lock.isTaken(); }));
    m_alerts.setNobodyThere(true);
    m_alerts.setNobodyThere(false);
    EXPECT_EQ(answerOf(thread), 0);
    EXPECT_TRUE(m_presenter.shown().empty());
}

} // namespace
} // namespace veilkeep
