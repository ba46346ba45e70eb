#include "tests/worker/WorkerFixture.h"

#include "core/protocol/WorkerError.h"
#include "worker/ItemMover.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <set>

namespace veilkeep::test {
namespace {

struct Fault {
    const char* name;
    int systemError;
};
constexpr Fault faults[] = {{"ENOSPC", ENOSPC}, {"EIO", EIO},       {"EACCES", EACCES}, {"EPERM", EPERM},
                            {"EROFS", EROFS},   {"EDQUOT", EDQUOT}, {"EMFILE", EMFILE}, {"EINTR", EINTR}};

// The calls that reach a file system. What close() answers changes nothing, and write() is the answer itself.
constexpr const char* fileCalls =
    "open,openat,openat2,stat,lstat,fstat,newfstatat,statx,statfs,fstatfs,access,faccessat,faccessat2,"
    "readlink,"
    "readlinkat,read,getdents64,mkdir,mkdirat,rename,renameat,renameat2,link,linkat,unlink,unlinkat,rmdir,"
    "chmod,fchmod,fchmodat,chown,fchown,fchownat,flock,fsync";

// Which calls fail all the time, so that the worker takes another way.
struct World {
    std::string name;
    std::vector<std::string> injections;
    std::string calls;       // each with a comma after it
    std::vector<bool> kinds; // files (false) and folders, where they take different ways

    bool fails(const std::string& call) const { return calls.find(call + ",") != std::string::npos; }
};
void PrintTo(const World& world, std::ostream* stream) {
    *stream << world.name;
}
const World worlds[] = {
    {"Plain", {}, "", {false, true}},
    {"Links", {"inject=renameat2:error=EINVAL"}, "renameat2,", {false, true}},
    {"Placeholders",
     {"inject=renameat2:error=EINVAL", "inject=linkat:error=EPERM"},
     "renameat2,linkat,",
     {false}},
};

struct Scenario {
    bool hides = true, isFolder = false;
    bool hasNeighbour = false; // another hidden item, so that ".SYS_INDEX" is there and stays
};

// One call of the worker goes wrong: what it says is what happened, and nothing is left half done.
class ErrorMatrixTest : public WorkerFixture, public ::testing::WithParamInterface<World> {
protected:
    using Names = std::set<std::string>;

    const std::string m_path = m_tree.path("t/item.txt");
    const std::string m_hidden = hiddenPathOf(m_path);
    const std::string m_index = m_tree.path("t/.SYS_INDEX");
    Scenario m_scenario;
    std::map<std::string, ItemState> m_item;
    Names m_names, m_hiddenNames;
    int m_runs = 0, m_errorsTold = 0;

    Names visibleNames() const { return namesIn(m_tree.path("t")); }
    Names hiddenNames() const { return exists(m_index) ? namesIn(m_index) : Names(); }
    const std::string& oldPlace() const { return m_scenario.hides ? m_path : m_hidden; }
    const std::string& newPlace() const { return m_scenario.hides ? m_hidden : m_path; }

    void setUp() {
        std::filesystem::remove_all(m_tree.path("t"));
        m_tree.makeFile(m_scenario.isFolder ? "t/item.txt/inner" : "t/item.txt", "content");
        if (m_scenario.hasNeighbour)
            m_tree.makeFile("t/.SYS_INDEX/neighbour");
        if (!m_scenario.hides) {
            ASSERT_EQ(hideItem(m_path).error, WorkerError::Success);
        }
        m_item = snapshotOf(oldPlace());
        m_names = visibleNames();
        m_hiddenNames = hiddenNames();
    }

    ProgramRun runTraced(const std::string& calls, const std::vector<std::string>& injections,
                         const std::string& log) {
        std::vector<std::string> options = {"-f", "--seccomp-bpf", "-o", log, "-e", "trace=" + calls};
        for (const std::string& injection : injections)
            options.insert(options.end(), {"-e", injection});
        std::vector<std::string> arguments = {bundledProgram("cloakWorker"), "-p", "-i"};
        arguments.insert(arguments.end(), m_scenario.hides
                                              ? std::initializer_list<std::string>{"-hide", "-removeRecents"}
                                              : std::initializer_list<std::string>{"-unhide"});
        arguments.push_back(oldPlace());
        ++m_runs;
        return runProgram(traced(options, arguments));
    }

    void expectUntouched(const ProgramRun& run, const Fault& fault) {
        ++m_errorsTold;
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(snapshotOf(oldPlace()), m_item);
        EXPECT_EQ(visibleNames(), m_names);
        EXPECT_EQ(hiddenNames(), m_hiddenNames);
        EXPECT_NE(fault.systemError, EINTR) << "an interruption is no error";
        const int number = static_cast<int>(workerErrorFromErrno(fault.systemError));
        const bool atHiddenDirectory = number == 1 && run.output == "Error: 5";
        EXPECT_TRUE(atHiddenDirectory || run.output == "Error: " + std::to_string(number)) << run.output;
    }

    void expectMoved(const ProgramRun& run, const TracedCall& failed) {
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(run.output, "NewFilename: " + newPlace());
        EXPECT_EQ(snapshotOf(newPlace()), m_item);
        Names names, hidden;
        if (m_scenario.hasNeighbour)
            hidden.insert("neighbour");
        (m_scenario.hides ? hidden : names).emplace(lastPathComponent(newPlace()));
        EXPECT_EQ(hiddenNames(), hidden);
        if (!hidden.empty() || (failed.name == "unlinkat" && exists(m_index)))
            names.insert(".SYS_INDEX"); // an empty one that could not be removed does no harm
        EXPECT_EQ(visibleNames(), names);
    }

    void tryEveryFault(const World& world) {
        const std::string log = m_tree.path("calls");
        m_tree.makeFile("home/.local/share/recently-used.xbel", "of another item");
        setUp();
        expectMoved(runTraced("fcntl," + std::string(fileCalls), world.injections, log), {});
        const std::vector<TracedCall> calls = callsOfMain(readFile(log));
        EXPECT_GE(calls.size(), 9u) << readFile(log);
        bool isOnOtherWay = world.calls.empty(); // up to there every way is the plain one
        for (const TracedCall& call : calls) {
            isOnOtherWay = isOnOtherWay || world.fails(call.name);
            if (!isOnOtherWay || world.fails(call.name) || call.name == "fcntl")
                continue;
            for (const Fault& fault : faults) {
                std::vector<std::string> injections = world.injections;
                injections.push_back(call.injecting(std::string("error=") + fault.name));
                SCOPED_TRACE(injections.back());
                setUp();
                const ProgramRun run = runTraced(world.calls + call.name, injections, "/dev/null");
                run.exitStatus == 1 ? expectMoved(run, call) : expectUntouched(run, fault);
            }
        }
    }
};

TEST_P(ErrorMatrixTest, AnswerIsWhatHappened) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    for (const bool hides : {true, false})
        for (const bool isFolder : GetParam().kinds)
            for (const bool hasNeighbour : {false, true}) {
                if (isFolder && hasNeighbour)
                    continue; // no step of its own
                SCOPED_TRACE(::testing::Message()
                             << (hides ? "hide " : "unhide ") << (isFolder ? "folder" : "file")
                             << (hasNeighbour ? " beside another" : " alone"));
                m_scenario = {hides, isFolder, hasNeighbour};
                tryEveryFault(GetParam());
            }
    std::printf("%d runs, %d errors told\n", m_runs, m_errorsTold);
}

INSTANTIATE_TEST_SUITE_P(Worlds, ErrorMatrixTest, ::testing::ValuesIn(worlds),
                         [](const auto& world) { return world.param.name; });

} // namespace
} // namespace veilkeep::test
