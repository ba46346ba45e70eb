#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/storage/ListOwnership.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/Strace.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

namespace veilkeep::test {
namespace {

// veilkeepctl as a user or a script meets it.
class CommandTest : public ::testing::Test {
protected:
    ProgramRun ctl(const std::vector<std::string>& arguments) { return runCtl(arguments, m_tree.root()); }

    // The same under strace, with its options first.
    ProgramRun straced(const std::vector<std::string>& options, const std::vector<std::string>& arguments,
                       const std::function<void()>& inChild = {}) {
        std::vector<std::string> command = {bundledProgram("veilkeepctl")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return runProgram(traced(options, command), {0, m_tree.root(), inChild});
    }

    // The same with a terminal as its output and error stream.
    ProgramRun ctlOnTerminal(const std::string& commandLine) {
        return runProgram(
            {"/usr/bin/script", "-qec", bundledProgram("veilkeepctl") + " " + commandLine, "/dev/null"},
            {0, m_tree.root(), {}});
    }

    ScratchTree m_tree;
};

// What was moved in a folder is told and safe on the disk before the folder itself moves, whatever way it was
// named.
TEST_F(CommandTest, ItemsAndTheFoldersTheyLieIn) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    m_tree.makeFile("t/a/b/c");
    ASSERT_EQ(::symlink("a", m_tree.path("t/link").c_str()), 0);
    const std::string calls = m_tree.path("calls");
    const ProgramRun hide = straced({"-o", calls, "-e", "trace=openat", "-e", "status=failed"},
                                    {"hide", "t/link/b/c", "t/a/b", "t/a"});
    EXPECT_EQ(hide.errors, "");
    EXPECT_EQ(readFile(calls).find(m_tree.path("t/")), std::string::npos)
        << "not synced: " << readFile(calls);
    const ProgramRun unhide = ctl({"unhide", "t/a/b/c", "t/.SYS_INDEX/a/.SYS_INDEX/b", "t/a"});
    EXPECT_EQ(unhide.errors, "");
    EXPECT_TRUE(exists(m_tree.path("t/a/b/c")));
}

TEST_F(CommandTest, TellsWhatAKilledWorkerHadDone) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    m_tree.makeFile("t/.SYS_INDEX/devom");
    m_tree.makeFile("t/.SYS_INDEX/dedlofnu");
    const auto unhideAndKill = [&](const std::string& call, const std::string& path) {
        return straced({"-f", "-o", "/dev/null", "-e", "inject=" + call + ":signal=SIGKILL"},
                       {"unhide", m_tree.path(path)});
    };
    const ProgramRun moved = unhideAndKill("unlinkat", "t/moved");
    EXPECT_EQ(moved.output, m_tree.path("t/moved") + "\n");
    EXPECT_EQ(moved.exitStatus, 0);
    const ProgramRun notMoved = unhideAndKill("renameat2", "t/unfolded");
    EXPECT_EQ(notMoved.output, "");
    EXPECT_EQ(notMoved.errors, "veilkeepctl: " + m_tree.path("t/unfolded") + ": Unknown error\n");
    EXPECT_EQ(notMoved.exitStatus, 1);
}

TEST_F(CommandTest, SaysThatAnItemIsInThatStateAlready) {
    m_tree.makeFile("t/visible");
    m_tree.makeFile("t/.SYS_INDEX/neddih");
    const ProgramRun hide = ctl({"hide", "t/hidden", "t/.SYS_INDEX/neddih"});
    EXPECT_EQ(hide.errors, "veilkeepctl: t/hidden: Item you requested is already hidden.\n"
                           "veilkeepctl: t/.SYS_INDEX/neddih: Item you requested is already hidden.\n");
    const ProgramRun unhide = ctl({"unhide", "t/visible", "t/.SYS_INDEX/elbisiv"});
    EXPECT_EQ(unhide.errors, "veilkeepctl: t/visible: Item is not hidden.\n"
                             "veilkeepctl: t/.SYS_INDEX/elbisiv: Item not found.\n");
}

TEST_F(CommandTest, WrongUsage) {
    m_tree.makeFile("t/a");
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{}, "a command is missing"},
        {{"hide"}, "a path is missing"},
        {{"restore", "-0"}, "a path is missing"},
        {{"vanish", "t/a"}, "unknown command 'vanish'"},
        {{"hide", "-x", "t/a"}, "unknown option '-x'"},
        {{"hide", "--\x1b[2J", "t/a"}, "unknown option '--\\x1b[2J'"},
    };
    for (const auto& [arguments, mistake] : rows) {
        const ProgramRun run = ctl(arguments);
        EXPECT_EQ(run.exitStatus, 2) << mistake;
        EXPECT_EQ(run.output, "") << mistake;
        EXPECT_TRUE(run.errors.starts_with("veilkeepctl: " + mistake + "\n")) << run.errors;
    }
    if (::geteuid() == 0) {
        const ProgramRun run = runProgram(
            {"/usr/bin/env", "PKEXEC_UID=65534", bundledProgram("veilkeepctl"), "hide", m_tree.path("t/a")});
        EXPECT_EQ(run.exitStatus, 3) << run.errors;
    }
    EXPECT_TRUE(exists(m_tree.path("t/a")));
    EXPECT_EQ(ctl({"--help"}).exitStatus, 0);
    EXPECT_TRUE(ctl({"hide", "--help"}).output.starts_with("Usage: "));
    EXPECT_TRUE(ctl({"--version"}).output.starts_with("veilkeepctl "));
}

TEST_F(CommandTest, NamesOnATerminalAndElsewhere) {
    const std::string name = "a\n\x1b[31m\xFF";
    m_tree.makeFile(name);
    m_tree.makeFile("-rf");
    const std::string hidden = m_tree.path(".SYS_INDEX/\xFFm13[\x1b\na");
    EXPECT_EQ(ctl({"hide", name}).output, hidden + "\n");
    EXPECT_EQ(ctl({"unhide", "-0", name}).output, m_tree.path(name) + '\0');
    EXPECT_EQ(ctl({"hide", "--", "-rf"}).output, m_tree.path(".SYS_INDEX/fr-") + "\n");
    if (::access("/usr/bin/script", X_OK) != 0)
        GTEST_SKIP() << "script(1) is not installed";
    const ProgramRun onTerminal =
        ctlOnTerminal("hide \"$(printf 'a\\n\\033[31m\\377')\" \"$(printf 'missing\\033[2J')\"");
    EXPECT_NE(onTerminal.output.find("/.SYS_INDEX/\\xffm13[\\x1b\\na"), std::string::npos)
        << onTerminal.output;
    for (const char* const escape : {"\x1b[31m", "\x1b[2J"})
        EXPECT_EQ(onTerminal.output.find(escape), std::string::npos) << onTerminal.output;
}

TEST_F(CommandTest, RestoreListsAndFeedsUnhide) {
    m_tree.makeFile("t/.SYS_INDEX/redlof/.SYS_INDEX/a b");
    m_tree.makeFile("t/y/.SYS_INDEX/c\nd");
    const ProgramRun run = ctl({"restore", "-0", "t"});
    EXPECT_EQ(run.output, m_tree.path("t/y/.SYS_INDEX/c\nd") + '\0' +
                              m_tree.path("t/.SYS_INDEX/redlof/.SYS_INDEX/a b") + '\0' +
                              m_tree.path("t/.SYS_INDEX/redlof") + '\0');
    EXPECT_EQ(run.exitStatus, 0);
    const ProgramRun piped = runProgram({"/bin/sh", "-c", "\"$0\" restore -0 \"$1\" | xargs -0 \"$0\" unhide",
                                         bundledProgram("veilkeepctl"), m_tree.path("t")});
    EXPECT_EQ(piped.errors, "");
    EXPECT_TRUE(exists(m_tree.path("t/folder/b a")));
    EXPECT_TRUE(exists(m_tree.path("t/y/d\nc")));
    EXPECT_EQ(ctl({"restore", "t"}).output, "")
        << "records of items that are visible again are no longer told";
    const ProgramRun failed = ctl({"restore", "t/missing", "t"});
    EXPECT_EQ(failed.errors, "veilkeepctl: t/missing: Item not found.\n");
    EXPECT_EQ(failed.exitStatus, 1);
}

TEST_F(CommandTest, RestoreWithTroubleInTheFolderOfRecords) {
    m_tree.makeFile("t/.SYS_INDEX/a");
    const std::string records = OwnPlaces::current().inProgressDirectory;
    ASSERT_EQ(runProgram({"/bin/mkdir", "-p", records}).exitStatus, 0);
    writeFile(records + "/broken.plist", "<plist>");
    const ProgramRun damaged = ctl({"restore", "t"});
    EXPECT_EQ(damaged.output, m_tree.path("t/.SYS_INDEX/a") + "\n");
    EXPECT_EQ(damaged.errors, "veilkeepctl: " + records + "/broken.plist: The file is damaged.\n");
    EXPECT_EQ(damaged.exitStatus, 1);
    ASSERT_EQ(runProgram({"/bin/rm", "-r", records}).exitStatus, 0);
    writeFile(records, {});
    const ProgramRun refused = ctl({"restore", "t"});
    EXPECT_EQ(refused.errors,
              "veilkeepctl: t: Unknown error\nveilkeepctl: " + records + ": Not a directory\n");
    EXPECT_EQ(refused.exitStatus, 1);
}

TEST_F(CommandTest, PathLongerThanTheSystemTakes) {
    std::string folder = m_tree.makeDirectory("long");
    for (int level = 0; level < 25; ++level)
        folder += "/" + std::string(200, 'n');
    const ProgramRun made = runProgram({"/bin/sh", "-c",
                                        "name=$(printf '%0200d' 0 | tr 0 n); for i in $(seq 25); do mkdir "
                                        "$name; cd -P $name; done; touch a.txt",
                                        "sh"},
                                       {0, m_tree.path("long"), {}});
    ASSERT_EQ(made.errors, "");
    const std::string hidden = folder + "/.SYS_INDEX/a.txt\n";
    const ProgramRun hide = ctl({"hide", folder + "/a.txt"});
    EXPECT_EQ(hide.errors, "");
    EXPECT_EQ(hide.output, hidden);
    EXPECT_EQ(ctl({"restore", "long"}).output, hidden);
    const ProgramRun unhide = ctl({"unhide", folder + "/a.txt"});
    EXPECT_EQ(unhide.errors, "");
    EXPECT_EQ(unhide.output, folder + "/a.txt\n");
}

TEST_F(CommandTest, OutputThatCannotBeWrittenIsAFailure) {
    m_tree.makeFile("t/a");
    const std::pair<std::string, std::string> rows[] = {
        {"exec \"$0\" hide \"$1\" >/dev/full", "No space left on device"},
        {"exec \"$0\" unhide \"$1\" >&-", "Bad file descriptor"},
        {"ulimit -f 0; exec \"$0\" hide \"$1\" >\"$1.out\"", "File too large"},
    };
    for (const auto& [script, reason] : rows) {
        const ProgramRun run =
            runProgram({"/bin/sh", "-c", script, bundledProgram("veilkeepctl"), m_tree.path("t/a")});
        EXPECT_EQ(run.exitStatus, 1) << script;
        EXPECT_TRUE(run.errors.ends_with("veilkeepctl: standard output: " + reason + "\n")) << run.errors;
    }
    EXPECT_TRUE(exists(m_tree.path("t/.SYS_INDEX/a"))) << "the item is hidden all the same";
}

// Each row is one call; the list lives on from row to row.
TEST_F(CommandTest, TheListFromCallToCall) {
    m_tree.makeFile("t/a", "12");
    m_tree.makeFile("t/b");
    m_tree.makeFile("t/moved");
    m_tree.makeFile("other/.SYS_INDEX/dedda");
    const std::string t = m_tree.path("t/");
    expectCalls(
        {
            {{"add", "t/a", "t/moved", "t/a", "other/added"},
             t + "a\n" + t + "moved\n" + m_tree.path("other/.SYS_INDEX/dedda") + "\n"},
            {{"add", "t/a", "t/none"},
             "",
             "t/a: The item is in the list already.\nveilkeepctl: t/none: Item not found.\n"},
            {{"hide", "t/a", "t/b"}, t + ".SYS_INDEX/a\n" + t + ".SYS_INDEX/b\n"},
            {{"list", "--state", "hidden", "--name", "A"},
             "hidden\t" + m_tree.path("other/added") + "\nhidden\t" + t + "a\n"},
            {{"status"}, "items\t4\nhidden\t3\nvisible\t1\nbroken\t0\nowner\tnone\n"},
            {{"locate", "t/moved", "t/b"}, "", "t/b: Item not found.\n"},
            {{"locate", "t/moved", "/"},
             "",
             "/: It is not allowed to hide these items to avoid serious system malfunctions.\n"},
            {{"locate", "t/moved", "t/.SYS_INDEX/b"},
             "",
             "t/moved: The item is not missing: it is at " + t + "moved.\n"},
            {{"remove", "--answer", "remove", "t/a", "t/none"},
             t + ".SYS_INDEX/a\n",
             "t/none: The item is not in the list.\n"},
            {{"remove", "t/moved"},
             "",
             "Are you sure you want to remove selected items from list?\n"
             "Items will be deleted only from list, not filesystem.\n"
             "veilkeepctl: not asked, so answered with: Cancel\nveilkeepctl: Nothing was removed.\n",
             3},
            {{"remove", "--yes", "t/moved"}, t + "moved\n"},
            {{"unhide", "t/a"}, t + "a\n"},
            {{"list", "-0", "--state=visible"}, t + "a" + '\0'},
            {{"merge", "t/a"}, "", "t/a: The file is damaged.\n"},
        },
        m_tree.root());
}

// While another process owns the list nothing is changed; what only reads does not wait.
TEST_F(CommandTest, AnotherProcessOwnsTheList) {
    m_tree.makeFile("t/a");
    ASSERT_EQ(ctl({"add", "t/a"}).exitStatus, 0);
    auto ownership = ListOwnership::take(OwnPlaces::current().dataDirectory, std::chrono::seconds(0));
    ASSERT_TRUE(ownership);
    EXPECT_EQ(ctl({"list"}).output, "visible\t" + m_tree.path("t/a") + "\n");
    EXPECT_NE(ctl({"status"}).output.find("owner\tother\n"), std::string::npos);
    const ProgramRun silent = ctl({"hide", "t/a"});
    EXPECT_EQ(silent.exitStatus, 4);
    EXPECT_EQ(silent.errors, "veilkeepctl: another process owns the list and did not answer\n");
    EXPECT_TRUE(exists(m_tree.path("t/a")));
}

TEST_F(CommandTest, ManyAtATimeLoseNothing) {
    const ProgramRun run = runProgram({"/bin/sh", "-c",
                                       "for i in 1 2 3 4 5 6 7 8; do : >\"$1/$i\"; \"$0\" hide \"$1/$i\" & "
                                       "done; wait; \"$0\" list --state hidden",
                                       bundledProgram("veilkeepctl"), m_tree.makeDirectory("t")});
    EXPECT_EQ(std::ranges::count(run.output, '\t'), 8) << run.output << run.errors;
}

// More than a pipe takes is printed while the next command, which needs the list, is started already.
TEST_F(CommandTest, FeedsACommandThatNeedsTheListItself) {
    const ProgramRun run = runProgram({"/bin/sh", "-c",
                                       "cd \"$1\"; name=$(printf '%0200d' 0); for i in $(seq 1000); do : "
                                       ">$name$i; done; \"$0\" add * >/dev/null;"
                                       "\"$0\" list -0 | xargs -0 -n 300 \"$0\" remove --yes | wc -l",
                                       bundledProgram("veilkeepctl"), m_tree.makeDirectory("t")});
    EXPECT_EQ(run.output, "1000\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(CommandTest, JsonCarriesAllNames) {
    const std::string good = m_tree.makeFile("t/\xC3\xA9\"\\");
    const std::string bad = m_tree.makeFile("t/\xFF");
    const std::string mark = m_tree.makeFile("\xEF\xBB\xBF"
                                             "bom");
    ASSERT_EQ(ctl({"add", good, bad, mark}).exitStatus, 0);
    const QJsonArray items =
        QJsonDocument::fromJson(QByteArray::fromStdString(ctl({"list", "--json"}).output)).array();
    ASSERT_EQ(items.size(), 3);
    EXPECT_TRUE(items[0]["path"].isString());
    EXPECT_EQ(bytesOf(items[0]["path"]), good);
    EXPECT_TRUE(items[1]["path"].isObject());
    EXPECT_EQ(bytesOf(items[1]["originalPath"]), bad);
    EXPECT_EQ(bytesOf(items[2]["name"]), "\xEF\xBB\xBF"
                                         "bom");
    const QJsonObject status =
        QJsonDocument::fromJson(QByteArray::fromStdString(ctl({"status", "--json"}).output)).object();
    EXPECT_EQ(status["items"].toInt(), 3);
    EXPECT_TRUE(status["owner"].isNull());
}

// A batch ends after the item in hand, unless the signal was to be ignored from the start.
TEST_F(CommandTest, HangUpInTheMiddleOfABatch) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    const auto hideTwoAndHangUp = [&](void (*answer)(int)) {
        return straced({"-o", "/dev/null", "-e", "inject=pidfd_open:signal=SIGHUP:when=1"},
                       {"hide", "t/a", "t/b"}, [=] { ::signal(SIGHUP, answer); });
    };
    for (const char* const name : {"t/a", "t/b"})
        m_tree.makeFile(name);
    const ProgramRun ended = hideTwoAndHangUp(SIG_DFL);
    EXPECT_EQ(ended.output, m_tree.path("t/.SYS_INDEX/a") + "\n");
    EXPECT_EQ(ended.errors, "veilkeepctl: interrupted; items left as they are: 1\n");
    EXPECT_EQ(ended.exitStatus, 1);
    ASSERT_EQ(ctl({"unhide", "t/a"}).exitStatus, 0);
    const ProgramRun underNohup = hideTwoAndHangUp(SIG_IGN);
    EXPECT_EQ(underNohup.output, m_tree.path("t/.SYS_INDEX/a") + "\n" + m_tree.path("t/.SYS_INDEX/b") + "\n");
    EXPECT_EQ(underNohup.exitStatus, 0);
}

TEST_F(CommandTest, TellsOnceThatTheSettingsWereDamaged) {
    m_tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", "<plist");
    const ProgramRun first = ctl({"list"}), second = ctl({"list"});
    EXPECT_NE(first.errors.find(".plist.damaged-"), std::string::npos) << first.errors;
    EXPECT_EQ(first.exitStatus, 0);
    EXPECT_EQ(second.errors, "");
}

} // namespace
} // namespace veilkeep::test
