#include "tests/support/FailingCall.h"
#include "tests/worker/WorkerFixture.h"

#include "core/records/File.h"
#include "core/tracking/FileAlias.h"

#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <span>

namespace veilkeep::test {
namespace {

// Sanitizers make each start slow and look at code, which links and long names share with files.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t numberOfKinds = 2;
#else
constexpr std::size_t numberOfKinds = 4;
#endif

// Kills the worker right before each of its system calls in turn, for items of several kinds, for a hide and
// for an unhide, with and without other hidden items. After each run the item is in one of its two places, as
// it was, and the record that was made of it before leads to it.
class KillMatrixTest : public WorkerFixture {
protected:
    struct Kind {
        std::string name;
        std::function<void(const std::string&)> make;
    };

    void SetUp() override {
        if (!straceWorks())
            GTEST_SKIP() << "strace cannot trace here";
        m_tree.makeDirectory("t");
    }

    // In a world in which these system calls fail.
    void killEverywhere(const std::map<long, int>& failures) {
        m_failures = failures;
        const Kind kinds[] = {
            {"report.pdf", [](const std::string& path) { writeFile(path, "content"); }},
            {"folder",
             [](const std::string& path) {
                 std::filesystem::create_directory(path);
                 for (int number = 0; number < 1000; ++number)
                     writeFile(joinPath(path, std::to_string(number)), std::to_string(number));
             }},
            {"link", [](const std::string& path) { std::filesystem::create_symlink("nowhere", path); }},
            {std::string(251, 'x') + ".txt", [](const std::string& path) { writeFile(path, "long"); }},
        };
        for (const Kind& kind : std::span(kinds).first(numberOfKinds))
            for (const bool othersAreHidden : {false, true})
                killAtEachCall(kind, othersAreHidden);
        std::printf("%d runs killed, %d healed, %d ended before the call\n", m_killed, m_healed, m_missed);
        EXPECT_GE(m_killed, 400);
    }

private:
    void killAtEachCall(const Kind& kind, bool othersAreHidden) {
        SCOPED_TRACE(kind.name + (othersAreHidden ? ", others hidden" : ""));
        m_visible = m_tree.path("t/" + kind.name);
        m_hidden = hiddenPathOf(m_visible);
        m_othersAreHidden = othersAreHidden;
        kind.make(m_visible);
        m_before = snapshotOf(m_visible);
        m_record = File::fileWithPath(m_visible);
        killAtEachCallOf("-hide", m_visible);
        killAtEachCallOf("-unhide", m_hidden);
        std::filesystem::remove_all(m_tree.path("t"));
        m_tree.makeDirectory("t");
    }

    void killAtEachCallOf(const std::string& operation, const std::string& path) {
        const std::string trace = m_tree.path("trace");
        putAt(path);
        ASSERT_EQ(runTraced({"-o", trace}, operation, path).exitStatus, 1);
        for (const TracedCall& call : callsOfMain(readFile(trace))) {
            SCOPED_TRACE(operation + " killed at " + call.name + " " + std::to_string(call.number));
            putAt(path);
            const ProgramRun run =
                runTraced({"-o", "/dev/null", "-e", call.injecting("signal=KILL")}, operation, path);
            ++(run.signal == SIGKILL ? m_killed : m_missed);
            expectHealed(m_othersAreHidden ? m_visible
                                           : path); // also by a record that was not kept up to date
            ASSERT_FALSE(HasFailure());
        }
        // Once, for it takes long and nothing puts lost content back.
        EXPECT_EQ(snapshotOf(exists(m_visible) ? m_visible : m_hidden), m_before);
    }

    ProgramRun runTraced(const std::vector<std::string>& options, const std::string& operation,
                         const std::string& path) {
        std::vector<std::string> arguments = {bundledProgram("cloakWorker"), "-p", "-i", operation};
        if (operation == "-hide")
            arguments.emplace_back("-removeRecents");
        arguments.push_back(path);
        return runProgram(traced(options, arguments), {0, {}, [this] {
                                                           for (const auto& [call, error] : m_failures)
                                                               if (!failCall(call, error))
                                                                   ::_exit(122);
                                                       }});
    }

    // Moves the item to one of its two places, whichever it is at now.
    void putAt(const std::string& path) {
        const std::string other = path == m_visible ? m_hidden : m_visible;
        m_tree.makeDirectory("t/.SYS_INDEX");
        if (exists(other))
            std::filesystem::rename(other, path);
        const std::string another = m_tree.path("t/.SYS_INDEX/rehtona");
        if (m_othersAreHidden)
            writeFile(another, "another");
        else if (path == m_visible)
            std::filesystem::remove(m_tree.path("t/.SYS_INDEX"));
    }

    bool isAt(const std::string& path) const {
        const auto found = describeItemAt(path);
        return found && found->item == decodeAliasRecord(m_record.alias().value())->item;
    }

    // As the application checks its records.
    void expectHealed(const std::string& recordedPath) {
        File file = m_record;
        file.setPath(recordedPath);
        file.setState(file.stateFromPath());
        AliasResolver resolver(AliasResolver::Reach::Nearby);
        m_healed += exists(m_visible) && exists(m_hidden);
        EXPECT_TRUE(file.checkPathesConsistency(resolver));
        EXPECT_NE(file.checkIdentity(), File::IdentityCheck::Renewed) << "the item is what the record knows";
        EXPECT_NE(exists(m_visible), exists(m_hidden));
        const std::string& place = exists(m_visible) ? m_visible : m_hidden;
        ASSERT_TRUE(isAt(place));
        EXPECT_EQ(file.path(), place);
        EXPECT_EQ(file.state(), place == m_visible ? File::Visible : File::Hidden);
        EXPECT_EQ(file.originalPath(), m_visible);
        EXPECT_EQ(file.checkIdentity(), File::IdentityCheck::Confirmed);
        expectNothingElse();
    }

    void expectNothingElse() {
        std::set<std::string> all = namesIn(m_tree.path("t"));
        if (all.contains(".SYS_INDEX"))
            all.merge(namesIn(m_tree.path("t/.SYS_INDEX")));
        for (const std::string& path : {m_visible, m_hidden, std::string(".SYS_INDEX")})
            all.erase(std::string(lastPathComponent(path)));
        EXPECT_EQ(all, m_othersAreHidden ? std::set<std::string>{"rehtona"} : std::set<std::string>());
    }

    std::map<long, int> m_failures;
    std::string m_visible, m_hidden;
    bool m_othersAreHidden = false;
    std::map<std::string, ItemState> m_before;
    File m_record;
    int m_killed = 0, m_healed = 0, m_missed = 0;
};

TEST_F(KillMatrixTest, MoveInOneStep) {
    killEverywhere({});
}

TEST_F(KillMatrixTest, MoveInTwoSteps) {
    killEverywhere({{SYS_renameat2, EINVAL}});
}

TEST_F(KillMatrixTest, MoveOverAPlaceholder) {
    killEverywhere({{SYS_renameat2, EINVAL}, {SYS_linkat, EPERM}});
}

} // namespace
} // namespace veilkeep::test
