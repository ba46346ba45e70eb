#include "core/base/UniqueFd.h"
#include "core/environment/XdgDirectories.h"
#include "core/storage/ListOwnership.h"
#include "tests/ctl/RescueFixture.h"
#include "tests/ctl/Terminal.h"
#include "tests/support/HostileNames.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/Strace.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace veilkeep::test {
namespace {

using RescueTest = RescueFixture;

// What every rescue of this tree has to bring back: hidden folders in hidden folders, at any depth.
class NestedRescueTest : public RescueFixture {
protected:
    void SetUp() override {
        m_tree.makeFile("t/folder/inner/deep/a b.txt", "1", 0600);
        m_tree.makeFile("t/folder/inner/x", "2");
        m_tree.makeFile("t/folder/plain", "3");
        m_tree.makeFile("t/other/.profile", "4");
        ASSERT_EQ(::symlink("/etc", m_tree.path("t/link").c_str()), 0);
        m_before = itemsOf("t");
        for (const char* item : {"t/folder/inner/deep/a b.txt", "t/folder/inner/x", "t/folder/inner",
                                 "t/folder", "t/other/.profile", "t/link"})
            hide(item);
        m_hidden = itemsOf("t");
    }

    std::map<std::string, ItemState> m_before, m_hidden;
};

TEST_F(NestedRescueTest, BringsEverythingBackAsItWas) {
    const auto home = namesIn(m_tree.home());
    const ProgramRun run = rescue({"--yes", "t"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "veilkeepctl: items that came back: 6; items that did not: 0\n");
    std::string places;
    for (const char* place :
         {"folder/inner/deep/a b.txt", "folder/inner/x", "folder/inner", "folder", "link", "other/.profile"})
        EXPECT_NE(run.output.find(m_tree.path("t/") + place + "\n"), std::string::npos)
            << place << run.output;
    EXPECT_EQ(std::ranges::count(run.output, '\n'), 6);
    EXPECT_EQ(itemsOf("t"), m_before);
    EXPECT_EQ(namesIn(m_tree.home()), home) << "nobody's home is needed or touched";
}

TEST_F(NestedRescueTest, ShowsFirstAndMovesNothingUnasked) {
    const std::string t = m_tree.path("t");
    const std::string plan =
        t + "/.SYS_INDEX/redlof/.SYS_INDEX/renni/deep/.SYS_INDEX/b a.txt -> " + t +
        "/folder/inner/deep/a b.txt\n" + t + "/.SYS_INDEX/redlof/.SYS_INDEX/renni/.SYS_INDEX/x -> " + t +
        "/folder/inner/x\n" + t + "/.SYS_INDEX/redlof/.SYS_INDEX/renni -> " + t + "/folder/inner\n" + t +
        "/other/.SYS_INDEX/eliforp. -> " + t + "/other/.profile\n" + t + "/.SYS_INDEX/knil -> " + t +
        "/link\n" + t + "/.SYS_INDEX/redlof -> " + t + "/folder\n";
    const std::string summary = "items that can come back: 6; items that cannot: 0\n";
    expectCalls({{{"rescue", "--dry-run", "t"}, plan, summary, 0},
                 {{"rescue", "t"},
                  plan,
                  summary + "veilkeepctl: nothing was moved; add --yes to bring all this back\n",
                  3},
                 {{"rescue", "--answer", "Cancel", "t"}, "", "", 3},
                 {{"rescue", "--to", "copy", "--answer", "Cancel", "t"}, "", "", 3},
                 {{"rescue", "t", "--to", "t/copy"},
                  "",
                  "t/copy: lies in " + t + ", which is searched; please name another place\n",
                  3},
                 {{"rescue", "t/other/none", "--yes"}, "", "t/other/none: No such file or directory\n"},
                 {{"rescue", "password"}, "", "password: neither a folder nor a hidden item\n", 1},
                 {{"rescue", "t/folder", "--dry-run"}, "", "t/folder: No such file or directory\n"}},
                (m_tree.makeFile("password"), m_tree.root()));
    EXPECT_EQ(itemsOf("t"), m_hidden);
    EXPECT_FALSE(exists(m_tree.path("copy")));
}

TEST_F(NestedRescueTest, ADirectoryMayItselfBeHidden) {
    const std::string folder = "t/.SYS_INDEX/redlof";
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"t/.SYS_INDEX/redlof/.SYS_INDEX/renni/deep/.SYS_INDEX", {"inner/deep/a b.txt"}},
        {"t/.SYS_INDEX/redlof/.SYS_INDEX/renni", {"inner", "inner/x"}}, // hidden one inside, then itself
    };
    EXPECT_NE(
        rescue({"--yes", rows[0].first}).errors.find("stays hidden with it; to bring that back as well"),
        std::string::npos);
    EXPECT_TRUE(exists(m_tree.path(folder + "/.SYS_INDEX/renni/deep/a b.txt")));
    EXPECT_EQ(rescue({"--yes", rows[1].first}).exitStatus, 0);
    EXPECT_TRUE(exists(m_tree.path(folder + "/inner/x")));
    EXPECT_EQ(rescue({"--yes", "t/.SYS_INDEX/knil", folder}).exitStatus, 0); // a link is not entered
    EXPECT_EQ(rescue({"--yes", "t/other/.SYS_INDEX/eliforp.", "t"}).exitStatus, 0);
    EXPECT_EQ(itemsOf("t"), m_before);
}

TEST_F(NestedRescueTest, IsKilledAndRunAgain) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    const std::vector<std::string> atFirstSync =
        traced({"-o", "/dev/null", "-e", "inject=fsync:signal=KILL:when=1"},
               {bundledProgram("veilkeepctl"), "rescue", "--yes", "t"});
    int kills = 0;
    while (kills < 100 && runProgram(atFirstSync, {0, m_tree.root(), {}}).signal == SIGKILL)
        ++kills;
    EXPECT_EQ(kills, 5) << "after the items of each .SYS_INDEX";
    EXPECT_EQ(itemsOf("t"), m_before);
}

TEST_F(NestedRescueTest, IsInterrupted) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    const ProgramRun run = runProgram(traced({"-o", "/dev/null", "-e", "inject=fsync:signal=INT:when=1"},
                                             {bundledProgram("veilkeepctl"), "rescue", "--yes", "t"}),
                                      {0, m_tree.root(), {}});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, m_tree.path("t/.SYS_INDEX/redlof/.SYS_INDEX/renni/deep/a b.txt") + "\n");
    EXPECT_EQ(run.errors, "veilkeepctl: interrupted; items left as they are: 5\n"
                          "veilkeepctl: items that came back: 1; items that did not: 5\n");
    EXPECT_EQ(rescue({"--yes", "t"}).exitStatus, 0);
    EXPECT_EQ(itemsOf("t"), m_before);
}

TEST_F(NestedRescueTest, IsNotAllWellWithoutASync) {
    if (!straceWorks())
        GTEST_SKIP() << "strace cannot trace here";
    const ProgramRun run = runProgram(traced({"-o", "/dev/null", "-e", "inject=fsync:error=EIO:when=1"},
                                             {bundledProgram("veilkeepctl"), "rescue", "--yes", "t"}),
                                      {0, m_tree.root(), {}});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("may not survive a power cut"), std::string::npos) << run.errors;
    EXPECT_EQ(itemsOf("t"), m_before);
}

TEST_F(NestedRescueTest, IsAskedForOnTheTerminal) {
    Terminal terminal({bundledProgram("veilkeepctl"), "rescue", "t"}, m_tree.root());
    const std::string shown = terminal.readUntil("[1-2]: ");
    EXPECT_NE(shown.find("/.SYS_INDEX/redlof -> "), std::string::npos) << shown;
    EXPECT_NE(shown.find("Bring Back"), std::string::npos) << shown;
    EXPECT_EQ(itemsOf("t"), m_hidden);
    terminal.type("1\n");
    EXPECT_EQ(terminal.waitForEnd(), 0);
    EXPECT_EQ(itemsOf("t"), m_before);
}

// While the person reads, somebody puts a link to another place where a folder was.
TEST_F(NestedRescueTest, IsNotLedElsewhere) {
    m_tree.makeFile("bait/.SYS_INDEX/eliforp.", "bait");
    const auto bait = snapshotOf(m_tree.path("bait"));
    Terminal terminal({bundledProgram("veilkeepctl"), "rescue", "t"}, m_tree.root());
    terminal.readUntil("[1-2]: ");
    std::filesystem::rename(m_tree.path("t/other"), m_tree.path("t/away"));
    ASSERT_EQ(::symlink(m_tree.path("bait").c_str(), m_tree.path("t/other").c_str()), 0);
    terminal.type("1\n");
    EXPECT_EQ(terminal.waitForEnd(), 1);
    EXPECT_EQ(snapshotOf(m_tree.path("bait")), bait);
    EXPECT_TRUE(exists(m_tree.path("t/folder/inner/deep/a b.txt"))) << "it goes on with the others";
}

TEST_F(RescueTest, ComesBackWhateverItsName) {
    m_tree.makeDirectory("t");
    for (const std::string& name : hostileNames())
        if (refusalToHide(name) == NameRefusal::None)
            m_tree.makeFile("t/" + name, name);
    const auto before = itemsOf("t");
    for (const auto& [name, state] : before)
        hide("t/" + name);
    const ProgramRun plan = rescue({"-0", "--dry-run", "t"});
    const ProgramRun run = rescue({"-0", "--yes", "--", "t"});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(itemsOf("t"), before);
    EXPECT_GT(before.size(), 500u);
    EXPECT_EQ(std::ranges::count(run.output, '\0'), static_cast<std::ptrdiff_t>(before.size()));
    EXPECT_EQ(std::ranges::count(plan.output, '\0'), static_cast<std::ptrdiff_t>(2 * before.size()));
}

TEST_F(RescueTest, NothingIsReplacedAndNothingLost) {
    m_tree.makeFile("t/.SYS_INDEX/rettel.odt", "hidden");
    m_tree.makeFile("t/letter.odt", "in the way");
    m_tree.makeFile("t/letter 2.odt", "in the way as well");
    m_tree.makeFile("t/.SYS_INDEX/d.r/.SYS_INDEX/y", "in a folder that gets a number");
    m_tree.makeDirectory("t/d.r");
    m_tree.makeFile("t/.SYS_INDEX/XEDNI_SYS.", "would be the hidden folder");
    m_tree.makeFile("t/.SYS_INDEX/.SYS_INDEX/owt", "below two");
    const std::string expected = m_tree.path("t/XEDNI_SYS.") + "\n" + m_tree.path("t/d.r 2") + "\n" +
                                 m_tree.path("t/d.r 2/y") + "\n" + m_tree.path("t/letter 3.odt") + "\n" +
                                 m_tree.path("t/two") + "\n";
    const auto sortedLines = [](const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t begin = 0; begin < text.size(); begin = text.find('\n', begin) + 1)
            lines.push_back(text.substr(begin, text.find('\n', begin) + 1 - begin));
        std::ranges::sort(lines);
        std::string sorted;
        for (const std::string& line : lines)
            sorted += line.substr(line.find("-> ") == std::string::npos ? 0 : line.find("-> ") + 3);
        return sorted;
    };
    const ProgramRun plan = rescue({"--dry-run", "t"});
    const ProgramRun run = rescue({"--yes", "t"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(sortedLines(run.output), expected);
    for (const auto& [name, content] :
         std::map<std::string, std::string>{{"letter.odt", "in the way"},
                                            {"letter 2.odt", "in the way as well"},
                                            {"letter 3.odt", "hidden"},
                                            {"two", "below two"}})
        EXPECT_EQ(readFile(m_tree.path("t/" + name)), content) << name;
    for (const ProgramRun& told : {plan, run}) {
        EXPECT_NE(told.errors.find("rettel.odt: its place is taken"), std::string::npos) << told.errors;
        EXPECT_NE(told.errors.find("XEDNI_SYS.: keeps its hidden name"), std::string::npos) << told.errors;
    }
    for (const char* place : {"/t/letter 3.odt\n", "/t/d.r 2/y\n", "/t/two\n", "/t/XEDNI_SYS.\n"})
        EXPECT_NE(plan.output.find(place), std::string::npos) << plan.output;
}

// What moves leave that were cut off where renaming takes two steps.
TEST_F(RescueTest, LeftoversOfCutOffMoves) {
    m_tree.makeFile("t/visible", "item");
    m_tree.makeFile("t/.SYS_INDEX/elbisiv", "", 0); // the placeholder of a hide
    const std::string two = m_tree.makeFile("t/.SYS_INDEX/owt", "both names");
    ASSERT_EQ(::link(two.c_str(), m_tree.path("t/two").c_str()), 0);
    EXPECT_EQ(rescue({"--dry-run", "t"}).output, two + " -> " + m_tree.path("t/two") + "\n");
    const ProgramRun run = rescue({"--yes", "t"});
    EXPECT_EQ(run.output, m_tree.path("t/two") + "\n") << run.errors;
    EXPECT_EQ(readFile(m_tree.path("t/visible")), "item");
    EXPECT_EQ(namesIn(m_tree.path("t")), (std::set<std::string>{".SYS_INDEX", "two", "visible"}));
}

TEST_F(RescueTest, TheListHealsByItself) {
    m_tree.makeFile("t/a.txt", "a");
    m_tree.makeFile("t/d/b", "b");
    ASSERT_EQ(runCtl({"hide", "t/a.txt", "t/d/b", "t/d"}, m_tree.root()).exitStatus, 0);
    auto owner = ListOwnership::take(OwnPlaces::current().dataDirectory, std::chrono::seconds(0));
    ASSERT_TRUE(owner); // whoever owns it is not asked
    EXPECT_EQ(rescue({"--yes", "t"}).exitStatus, 0);
    owner = Error{};
    EXPECT_EQ(runCtl({"check"}, m_tree.root()).exitStatus, 0);
    std::string listed;
    for (const char* item : {"t/a.txt", "t/d/b", "t/d"})
        listed += "visible\t" + m_tree.path(item) + "\n";
    EXPECT_EQ(runCtl({"list"}, m_tree.root()).output, listed);
}

TEST_F(RescueTest, AnOrdinaryUserGoesOnPastWhatIsNotHis) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to make what an ordinary user may not change";
    m_tree.makeFile("t/mine/a");
    m_tree.makeFile("t/roots/b");
    m_tree.makeFile("t/closed/c");
    for (const char* item : {"t/mine/a", "t/roots/b", "t/closed/c"})
        hide(item);
    for (const char* mine : {"t/mine", "t/mine/.SYS_INDEX", "t/mine/.SYS_INDEX/a"})
        ASSERT_EQ(::lchown(m_tree.path(mine).c_str(), ordinaryUser, ordinaryUser), 0);
    ASSERT_EQ(::chmod(m_tree.path("t/closed").c_str(), 0700), 0);
    ASSERT_EQ(::chown(m_tree.home().c_str(), ordinaryUser, ordinaryUser), 0);
    const std::string closed = "veilkeepctl: " + m_tree.path("t/closed") + ": Permission denied\n";
    const std::string notMine =
        "veilkeepctl: " + m_tree.path("t/roots/.SYS_INDEX/b") + ": Not enough rights to perform operation.\n";
    const ProgramRun plan = rescue({"--dry-run", "t"}, ordinaryUser);
    EXPECT_EQ(plan.exitStatus, 1);
    EXPECT_EQ(plan.errors,
              closed + notMine + "veilkeepctl: items that can come back: 1; items that cannot: 1\n");
    const ProgramRun run = rescue({"--yes", "t"}, ordinaryUser);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, m_tree.path("t/mine/a") + "\n");
    EXPECT_EQ(run.errors,
              closed + notMine +
                  "veilkeepctl: what needs more rights comes back where an administrator does this\n"
                  "veilkeepctl: items that came back: 1; items that did not: 1\n");
}

TEST_F(RescueTest, RootBringsBackWhatIsAnotherUsers) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to have files of another user";
    m_tree.makeFile("t/d/a", "a", 0600);
    m_tree.makeFile("t/b", "b");
    ASSERT_EQ(runProgram({"/bin/chown", "-hR", "65534:65534", m_tree.path("t"), m_tree.home()}).exitStatus,
              0);
    const auto before = itemsOf("t");
    const std::string ctl = bundledProgram("veilkeepctl");
    ASSERT_EQ(runProgram({ctl, "hide", m_tree.path("t/d/a"), m_tree.path("t/d"), m_tree.path("t/b")},
                         {ordinaryUser, {}, {}})
                  .exitStatus,
              0);
    EXPECT_EQ(rescue({"--yes", "t"}).exitStatus, 0);
    EXPECT_EQ(itemsOf("t"), before);
    ASSERT_EQ(runProgram({ctl, "check"}, {ordinaryUser, {}, {}}).exitStatus, 0);
    EXPECT_EQ(runProgram({ctl, "list", "--state", "hidden"}, {ordinaryUser, {}, {}}).output, "");
}

// Others may have put something into it that must not come into a folder of root's.
TEST_F(RescueTest, RootLeavesAloneWhatOthersCouldHavePutThere) {
    if (!isRoot())
        GTEST_SKIP() << "needs root: an ordinary user moves with no more than his own rights";
    const std::string item = m_tree.makeFile("t/.SYS_INDEX/tnalp");
    m_tree.makeFile("t/.SYS_INDEX/.SYS_INDEX/repeed");
    ASSERT_EQ(::chmod(m_tree.path("t/.SYS_INDEX").c_str(), 0777), 0);
    for (const char* option : {"--dry-run", "--yes"}) {
        const ProgramRun run = rescue({option, "t"});
        EXPECT_EQ(run.exitStatus, 1);
        for (const char* stays : {"/tnalp: its ", "/repeed: its "})
            EXPECT_NE(run.errors.find(stays), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find("not open to, the same users"), std::string::npos) << run.errors;
    }
    EXPECT_TRUE(exists(item));
    ASSERT_EQ(::chmod(m_tree.path("t").c_str(), 01777), 0); // they may put there what they like
    ASSERT_EQ(::chmod(m_tree.path("t/.SYS_INDEX").c_str(), 01777), 0);
    EXPECT_EQ(rescue({"--yes", "t"}).exitStatus, 0);
}

// Longer than what an argument of a program may be.
TEST_F(RescueTest, APathThatIsTooLongToBeHandedOn) {
    UniqueFd level(::open(m_tree.makeDirectory("t").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int depth = 0; depth <= 530; ++depth) {
        const std::string name = depth < 530 ? std::string(250, 'd') : ".SYS_INDEX";
        ASSERT_EQ(::mkdirat(level.get(), name.c_str(), 0700), 0);
        level.reset(::openat(level.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    ASSERT_TRUE(UniqueFd(::openat(level.get(), "a", O_WRONLY | O_CREAT | O_CLOEXEC, 0600)));
    for (const char* option : {"--dry-run", "--yes"}) {
        const ProgramRun run = rescue({option, "t"});
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_NE(run.errors.find("/a: its path is too long"), std::string::npos) << option;
    }
    EXPECT_EQ(rescue({"--yes", "--to", "out", "t"}).exitStatus, 0);
}

TEST_F(RescueTest, OtherFileSystems) {
    m_tree.makeFile("t/a");
    m_tree.makeDirectory("t/mounted");
    const PrivateMount mount("scratch", m_tree.path("t/mounted"), "tmpfs");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    m_tree.makeFile("t/mounted/b");
    hide("t/a");
    hide("t/mounted/b");
    EXPECT_EQ(rescue({"--yes", "--one-file-system", "t"}).output, m_tree.path("t/a") + "\n");
    EXPECT_EQ(rescue({"--yes", "t"}).output, m_tree.path("t/mounted/b") + "\n");
}

TEST_F(RescueTest, AsksForThePassword) {
    m_tree.makeFile("t/a");
    hide("t/a");
    const auto ctl = [&](const std::string& arguments) {
        return runProgram(
                   {"/bin/sh", "-c", "echo secret | " + bundledProgram("veilkeepctl") + " " + arguments},
                   {0, m_tree.root(), {}})
            .exitStatus;
    };
    ASSERT_EQ(ctl("password set --password-stdin"), 0);
    EXPECT_EQ(ctl("rescue --yes t"), 3);
    EXPECT_FALSE(exists(m_tree.path("t/a")));
    EXPECT_EQ(ctl("rescue --yes --password-stdin t"), 0);
    EXPECT_TRUE(exists(m_tree.path("t/a")));
}

} // namespace
} // namespace veilkeep::test
