#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/names/BaseCloakLogic.h"
#include "filelist/FilesInfoFile.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/worker/TracedCall.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <map>

namespace veilkeep::test {
namespace {

// Kills veilkeepctl in the midst of a batch, right before each of its system calls that concern the list, its
// lock or a hidden directory; the worker that it waited for goes on. The next check finds every item, and
// tells where it is.
class KillTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (runProgram({"/usr/bin/strace", "-o", "/dev/null", "/bin/true"}).exitStatus != 0)
            GTEST_SKIP() << "strace cannot trace here";
        ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0); // workers that are left are this process' children
        for (int number = 0; number < 20; ++number)
            m_items.push_back(
                m_tree.makeFile("t/item" + std::to_string(number), "content " + std::to_string(number)));
    }

    void killEverywhere() {
        int killed = 0;
        const std::vector<TracedCall> calls = callsOfConcern();
        for (const TracedCall& call : calls) {
            SCOPED_TRACE("killed at " + call.line);
            beginAnew();
            killed += ctl({"-o", "/dev/null", "-e",
                           "inject=" + call.name + ":signal=KILL:when=" + std::to_string(call.number)},
                          "hide")
                          .signal == SIGKILL;
            expectToldRightly();
            ASSERT_FALSE(HasFailure());
        }
        std::printf("killed at %d of %zu calls; %d items were hidden by then\n", killed, calls.size(),
                    m_hidden);
        EXPECT_GE(killed, 100);
    }

    // With strace's options, if there are any.
    ProgramRun ctl(const std::vector<std::string>& strace, const std::string& command) {
        std::vector<std::string> arguments;
        if (!strace.empty())
            arguments = {"/usr/bin/strace", "-E", "ASAN_OPTIONS=detect_leaks=0"};
        arguments.insert(arguments.end(), strace.begin(), strace.end());
        arguments.insert(arguments.end(), {bundledProgram("veilkeepctl"), command});
        if (command != "check")
            arguments.insert(arguments.end(), m_items.begin(), m_items.end());
        ProgramRun run = runProgram(arguments);
        while (::waitpid(-1, nullptr, 0) > 0)
            ;
        return run;
    }

    std::vector<TracedCall> callsOfConcern() {
        const std::string trace = m_tree.path("trace");
        EXPECT_EQ(ctl({"-y", "-o", trace}, "hide").exitStatus, 0);
        std::vector<TracedCall> calls = callsOfMain(readFile(trace));
        std::erase_if(calls, [this](const TracedCall& call) {
            return call.line.find(directoryOf(m_dataFile)) == std::string::npos &&
                   call.line.find(hiddenDirectoryName) == std::string::npos;
        });
        return calls;
    }

    // All items visible, and the same items as before.
    void beginAnew() {
        for (const std::string& item : m_items)
            if (const std::string hidden = hiddenPathOf(item); exists(hidden))
                std::filesystem::rename(hidden, item);
        std::filesystem::remove_all(m_tree.path("t/.SYS_INDEX"));
        std::filesystem::remove_all(directoryOf(m_dataFile));
        if (m_list.empty())
            return;
        std::filesystem::create_directories(directoryOf(m_dataFile));
        writeFile(m_dataFile, m_list);
    }

    void expectToldRightly() {
        const ProgramRun check = ctl({}, "check");
        EXPECT_EQ(check.errors, "");
        EXPECT_EQ(check.exitStatus, 0);
        std::map<std::string, File> records;
        for (File& record : FilesInfoFile(m_dataFile).read().value_or({}))
            EXPECT_TRUE(records.emplace(record.originalPath(), record).second) << "twice";
        for (std::size_t number = 0; number < m_items.size(); ++number) {
            const std::string& item = m_items[number];
            const std::string hidden = hiddenPathOf(item);
            const bool isHidden = exists(hidden);
            m_hidden += isHidden;
            EXPECT_NE(isHidden, exists(item)) << item;
            EXPECT_EQ(readFile(isHidden ? hidden : item), "content " + std::to_string(number));
            const auto record = records.find(item);
            if (record == records.end()) {
                EXPECT_TRUE(m_list.empty() && !isHidden) << "not listed: " << item;
                continue;
            }
            EXPECT_EQ(record->second.path(), isHidden ? hidden : item);
            EXPECT_EQ(record->second.state(), isHidden ? File::Hidden : File::Visible) << item;
        }
    }

    static std::string hiddenPathOf(const std::string& item) {
        return BaseCloakLogic::constructHidenFullFileName(item,
                                                          joinPath(parentPath(item), hiddenDirectoryName));
    }

    ScratchTree m_tree;
    const std::string m_dataFile = OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep";
    std::vector<std::string> m_items;
    std::string m_list; // the list file to begin with; empty for none
    int m_hidden = 0;
};

TEST_F(KillTest, WhereAllItemsAreListed) {
    ASSERT_EQ(ctl({}, "add").exitStatus, 0);
    m_list = readFile(m_dataFile);
    killEverywhere();
}

// A hide lists them, before it moves the first one.
TEST_F(KillTest, WhereNoItemIsListed) {
    killEverywhere();
}

} // namespace
} // namespace veilkeep::test
