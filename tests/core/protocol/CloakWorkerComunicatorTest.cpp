#include "core/protocol/CloakWorkerComunicator.h"

#include "core/log/Log.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace veilkeep {
namespace {

class Listener : public CloakWorkerDelegate {
public:
    void processTempFile(const PropertyDictionary&) override {}
    void restoreStarted(const std::string& directory) override { calls.push_back("started " + directory); }
    void restoreFinished() override { calls.push_back("finished"); }

    std::vector<std::string> calls;
};

CloakWorkerComunicator badWorker(const test::ScratchTree& tree) {
    return CloakWorkerComunicator(VEILKEEP_BAD_WORKER, tree.path("data/InProgress"));
}

TEST(CloakWorkerComunicator, AsksAboutRecentItemsOnlyWhereNobodyWasAsked) {
    const test::ScratchTree tree;
    const struct {
        std::optional<bool> answer, wasAsked, wish;
    } rows[] = {{{}, {}, {}}, {{}, false, {}}, {{}, true, false}, {true, true, true}, {false, {}, false}};
    for (const auto& row : rows) {
        UserDefaults defaults(tree.path("settings"));
        if (row.answer)
            defaults.set("CleanRecentItems", *row.answer);
        if (row.wasAsked)
            defaults.set("CleanRecentItems_UserAcknowledged", *row.wasAsked);
        EXPECT_EQ(TraceWishes::from(defaults).cleanRecentItems, row.wish);
    }
}

TEST(CloakWorkerComunicator, StartsTheExpectedWorkerAhead) {
    const test::ScratchTree tree;
    CloakWorkerComunicator comunicator = badWorker(tree);
    const std::string show = "byte|touch=" + tree.path("moved") + "|out=NewFilename: |arguments|exit=1";
    const std::string ahead = "-w\n-p\n-i\n-unhide\n" + show + "\n";
    const std::string other = "out=NewFilename: /other|exit=1";

    comunicator.expect(WorkerOperation::Unhide, show);
    EXPECT_EQ(comunicator.unhideFileWithPath(other).newFileName(), "/other");
    EXPECT_FALSE(test::exists(tree.path("moved"))) << "moved before its turn";
    EXPECT_EQ(comunicator.unhideFileWithPath(show).newFileName(), ahead);

    // Another path, another operation, nothing expected any more, and wishes that it was not told.
    const std::function<CloakWorkerResult()> instead[] = {
        [&] { return comunicator.unhideFileWithPath(other); },
        [&] { return comunicator.hideFileWithPath(show + "|"); },
        [&] { return comunicator.expectNothing(), comunicator.unhideFileWithPath(other); },
        [&] {
            return comunicator.setTraceWishes({true, true}), comunicator.unhideFileWithPath(other);
        },
    };
    for (const auto& call : instead) {
        ASSERT_EQ(::unlink(tree.path("moved").c_str()), 0);
        comunicator.expect(WorkerOperation::Unhide, show);
        comunicator.unhideFileWithPath(other);
        call();
        EXPECT_FALSE(test::exists(tree.path("moved")));
        tree.makeFile("moved");
    }

    comunicator.expect(WorkerOperation::Unhide, "signal=9");
    comunicator.unhideFileWithPath(other);
    EXPECT_EQ(comunicator.unhideFileWithPath("signal=9").errorCode(), 1);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a worker was left behind";
}

// What a worker was told: whether it may ask, and what is known of the user's wish.
class WorkersEnvironment : public ::testing::Test {
protected:
    std::string told() {
        const std::string output =
            m_comunicator
                .hideFileWithPath(
                    "out=NewFilename: |variable=VEILKEEP_MAY_ASK|"
                    "variable=VEILKEEP_CLEAN_RECENT_ITEMS|variable=VEILKEEP_NOBODY_THERE|exit=1")
                .newFileName();
        std::string values;
        for (std::size_t place = output.find('='); place != std::string::npos;
             place = output.find('=', place + 1))
            values += output.substr(place + 1, output.find('\n', place) - place - 1) + " ";
        return values;
    }

    void hideWithStatus(int status) {
        EXPECT_EQ(m_comunicator.hideFileWithPath("out=NewFilename: /a|exit=" + std::to_string(status))
                      .newFileName(),
                  "/a");
    }

    const test::ScratchTree m_tree;
    CloakWorkerComunicator m_comunicator = badWorker(m_tree);
};

TEST_F(WorkersEnvironment, SaysWhetherQuestionsMayBeAsked) {
    bool isLeaving = false;
    ::setenv("VEILKEEP_MAY_ASK", "1", 1);
    EXPECT_EQ(told(), "0 none none ") << "what this process inherited says nothing";
    ::unsetenv("VEILKEEP_MAY_ASK");
    m_comunicator.setMayAsk(true, [&] { return isLeaving; });
    EXPECT_EQ(told(), "1 none none ");
    m_comunicator.setTraceWishes({true, true});
    EXPECT_EQ(told(), "0 1 1 ");
    m_comunicator.setTraceWishes({false, false});
    EXPECT_EQ(told(), "1 0 none ");
    isLeaving = true;
    EXPECT_EQ(told(), "0 0 none ");
    isLeaving = false;
    m_comunicator.setMayAsk(false);
    EXPECT_EQ(told(), "0 0 none ");
}

TEST_F(WorkersEnvironment, HoldsTheAnswerAboutRecentItems) {
    m_comunicator.setMayAsk(true);
    const std::pair<int, const char*> answers[] = {{2, "1 1 none "}, {3, "1 0 none "}, {1, "1 0 none "}};
    for (const auto& [status, expected] : answers) {
        hideWithStatus(status);
        EXPECT_EQ(told(), expected) << status;
    }
    m_comunicator.setTraceWishes({std::nullopt, false}); // the notification has not arrived yet
    EXPECT_EQ(told(), "1 0 none ");
    m_comunicator.setTraceWishes({true, false});
    EXPECT_EQ(told(), "1 1 none ");
    m_comunicator.setTraceWishes({std::nullopt, false});
    EXPECT_EQ(told(), "1 none none ");
    hideWithStatus(4); // nobody answered: not asked again in this batch
    EXPECT_EQ(told(), "1 1 none ");
    m_comunicator.setTraceWishes({std::nullopt, false});
    EXPECT_EQ(told(), "1 none none ");
    EXPECT_EQ(m_comunicator.unhideFileWithPath("out=Error: 6|exit=3").errorCode(), 6);
    EXPECT_EQ(told(), "1 none none ") << "an unhide answers nothing";
}

TEST_F(WorkersEnvironment, IsNeverOfBeforeAnAnswer) {
    m_comunicator.setMayAsk(true);
    const std::string next = "byte|touch=" + m_tree.path("moved") + "|out=NewFilename: /b|exit=1";
    m_comunicator.expect(WorkerOperation::Hide, next);
    hideWithStatus(3);
    EXPECT_EQ(m_comunicator.hideFileWithPath(next).errorCode(), 1) << "the one that waited would ask again";
    EXPECT_FALSE(test::exists(m_tree.path("moved")));
}

TEST(CloakWorkerComunicator, TellsOfEveryRestoreThatItIsFinished) {
    const test::ScratchTree tree;
    Listener listener;
    CloakWorkerComunicator comunicator = badWorker(tree);
    comunicator.setDelegate(&listener);
    const auto error = [](const RestoreSummary& summary) { return summary.error; };
    EXPECT_EQ(error(comunicator.restoreFiles("rubbish=100000|close|exit=3")), WorkerError::Unknown);
    EXPECT_EQ(error(comunicator.restoreFiles("signal=9")), WorkerError::Unknown);
    CloakWorkerComunicator missing(tree.path("missing"), tree.path("InProgress"));
    missing.setDelegate(&listener);
    EXPECT_EQ(error(missing.restoreFiles("/d")), WorkerError::Unknown);
    EXPECT_EQ(listener.calls,
              (std::vector<std::string>{"started rubbish=100000|close|exit=3", "finished", "started signal=9",
                                        "finished", "started /d", "finished"}));
    EXPECT_NE(test::readFile(Log::shared().path()).find("Error while restoring: "), std::string::npos);

    missing.setDelegate(nullptr);
    EXPECT_EQ(error(missing.restoreFiles("/d")), WorkerError::Unknown);
}

} // namespace
} // namespace veilkeep
