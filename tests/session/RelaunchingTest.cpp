#include "session/Relaunching.h"

#include "session/MovedBundle.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <vector>

namespace veilkeep::test {
namespace {

class RelaunchingTest : public ::testing::Test {
protected:
    RelaunchingTest() {
        QObject::connect(&m_relaunching, &Relaunching::QSApplicationWillRelaunchNotification, &m_relaunching,
                         [this] { m_steps.push_back("told"); });
    }

    // A program that writes what it was started with.
    std::string makeBundle(const std::string& name) const {
        m_tree.makeFile(name + "/Contents/MacOS/Veilkeep",
                        "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$relaunchFromPid\" > " + m_tree.path("new") +
                            " && mv " + m_tree.path("new") + " " + m_tree.path("started") + "\n",
                        0755);
        return m_tree.path(name);
    }

    const ScratchTree m_tree;
    UserDefaults m_defaults;
    ScriptedPresenter m_presenter;
    Alerts m_alerts{m_presenter, m_defaults};
    std::vector<std::string> m_steps;
    Relaunching m_relaunching{
        m_alerts, {[this] { m_steps.push_back("relaunch"); }, [this] { m_steps.push_back("end"); }}};
};

TEST_F(RelaunchingTest, StartsTheNewProcessAndEndsThisOne) {
    m_presenter.expect({"Relaunch required", "Later",
                        "Veilkeep needs to be relaunched for some changes to take effect",
                        QStringList{"Relaunch", "Later"}});
    m_relaunching.requestRelaunch();
    EXPECT_EQ(m_steps, std::vector<std::string>());

    m_relaunching.relaunchFromPath(makeBundle("A b.app"));
    EXPECT_EQ(m_steps, (std::vector<std::string>{"told", "relaunch", "end"}));
    const std::string told = m_tree.path("started");
    ASSERT_TRUE(waitUntil([&] { return exists(told); }));
    EXPECT_EQ(readFile(told), "0|" + std::to_string(::getpid()));
    EXPECT_EQ(std::getenv(Relaunching::marker), nullptr) << "for the new process alone";
    EXPECT_TRUE(waitUntil([&] { return !m_relaunching.isUnderWay(); })) << "it has ended";
    m_relaunching.takeBack();
}

TEST_F(RelaunchingTest, NothingEndsWhereTheProgramIsGone) {
    const std::string bundle = m_tree.makeDirectory("A.app");
    m_presenter.expect(
        {"Veilkeep could not be relaunched.", "OK",
         QString::fromStdString(bundle + "/Contents/MacOS/Veilkeep: No such file or directory")});
    m_relaunching.relaunchFromPath(bundle);
    m_tree.makeFile("A.app/Contents/MacOS/Veilkeep", "no program", 0755);
    m_presenter.expect({"Veilkeep could not be relaunched.", "OK"});
    m_relaunching.relaunchFromPath(bundle);
    m_presenter.expect({"Veilkeep could not be replaced. The former one is still there.", "OK"});
    m_relaunching.relaunchAtPath(bundle, m_tree.path("missing.app"));
    EXPECT_EQ(m_steps, std::vector<std::string>{"told"});
    EXPECT_EQ(std::getenv(Relaunching::marker), nullptr);
}

TEST_F(RelaunchingTest, NothingBeginsWhileItIsHeldUp) {
    Relaunching relaunching(m_alerts, {[this] { m_steps.push_back("relaunch"); },
                                       [this] { m_steps.push_back("end"); }, [] { return true; }});
    relaunching.relaunchFromPath(makeBundle("A.app"));
    EXPECT_EQ(m_steps, std::vector<std::string>());
    EXPECT_FALSE(relaunching.isUnderWay());
}

TEST_F(RelaunchingTest, AnUpdateTakesTheFormerPlace) {
    const std::string path = makeBundle("A.app"), source = m_tree.path("down/load.app");
    m_tree.makeFile("A.app/which", "former");
    m_tree.makeFile("Veilkeep.old.app/which", "long gone");
    m_tree.makeFile("down/load.app/which", "new");
    EXPECT_TRUE(moveToPath(path, source).value_or(false));
    EXPECT_EQ(readFile(path + "/which"), "new");
    EXPECT_FALSE(exists(source));
    EXPECT_FALSE(exists(m_tree.path("Veilkeep.old.app")));
    EXPECT_FALSE(moveToPath(m_tree.path("nothing.app"), path).value_or(true)) << "none was aside";
    EXPECT_EQ(readFile(m_tree.path("nothing.app/which")), "new");
}

TEST_F(RelaunchingTest, ASourceThatSharesAPlaceIsRefused) {
    const std::string path = makeBundle("in/A.app"), aside = m_tree.path("in/Veilkeep.old.app");
    m_tree.makeFile("in/Veilkeep.old.app/Inner.app/which", "aside");
    m_tree.makeFile("in/A.app/Inner.app/which", "inner");
    const std::string link = m_tree.path("link");
    ASSERT_EQ(::symlink(aside.c_str(), link.c_str()), 0);
    for (const std::string& source : {aside, aside + "/Inner.app", link, path, path + "/",
                                      path + "/Inner.app", m_tree.path("in"), m_tree.path("in/../in/A.app")})
        EXPECT_FALSE(moveToPath(path, source)) << source;
    EXPECT_FALSE(moveToPath(aside, path));
    EXPECT_EQ(readFile(aside + "/Inner.app/which"), "aside");
    EXPECT_EQ(readFile(path + "/Inner.app/which"), "inner");
}

// By volumes of their own: a source that may be read only is copied first and fails then, or is too large.
TEST_F(RelaunchingTest, NothingIsLostWhereTheUpdateCannotBeMoved) {
    const std::string volume = m_tree.makeDirectory("volume");
    const PrivateMount mount("none", volume, "tmpfs", 0, "size=1m");
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    m_tree.makeFile("volume/A.app/which", "former");
    const std::string source = m_tree.makeFile("new.app/which", "new");
    const std::string path = m_tree.path("volume/A.app");
    m_tree.makeFile("new.app/large", std::string(std::size_t{2} << 20, 'x'));
    EXPECT_FALSE(moveToPath(path, m_tree.path("new.app")));
    EXPECT_EQ(readFile(path + "/which"), "former");
    EXPECT_EQ(namesIn(volume), std::set<std::string>{"A.app"});
    EXPECT_EQ(namesIn(m_tree.path("new.app")), (std::set<std::string>{"large", "which"}));
    ::unlink(m_tree.path("new.app/large").c_str());
    EXPECT_TRUE(moveToPath(path, m_tree.path("new.app")).value_or(false));
    EXPECT_EQ(readFile(path + "/which"), "new");
    EXPECT_FALSE(exists(source));
}

// --- The processes ---

TEST(RelaunchingProcessesTest, TheMarkerNamesTheFormerOne) {
    struct FakeProcesses : Processes {
        bool wasLaunchedAtLogin() const override { return false; }
        bool waitForFormer(pid_t process, std::chrono::milliseconds) const override { return process == 12; }
    };
    for (const auto& [marker, isRelaunch] :
         {std::pair{"12", true}, {"13", false}, {"12x", false}, {"", false}}) {
        ::setenv(Relaunching::marker, marker, 1);
        EXPECT_EQ(Relaunching::waitForFormerProcess(FakeProcesses()), isRelaunch) << marker;
        EXPECT_EQ(std::getenv(Relaunching::marker), nullptr);
    }
}

TEST(RelaunchingProcessesTest, KillAndRestartGoByTheSignal) {
    const ScratchTree tree;
    const auto endOf = [](const std::function<void()>& body) {
        int status = 0;
        const pid_t child = startChild(body);
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : -WEXITSTATUS(status);
    };
    EXPECT_EQ(endOf([] { Relaunching::killOurselves(); }), SIGTERM);
    EXPECT_EQ(endOf([] {
                  ::signal(SIGTERM, SIG_IGN);
                  Relaunching::killOurselves(std::chrono::milliseconds(1));
              }),
              SIGABRT);
    EXPECT_EQ(endOf([] {
                  ::signal(SIGTERM, SIG_IGN);
                  Relaunching::restartOurselves(std::chrono::milliseconds(1));
              }),
              SIGABRT);
    EXPECT_EQ(endOf([] {
                  ::signal(SIGTERM, SIG_IGN); // the event loop ends the program
                  const auto kill = [] {
                      QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
                      Relaunching::killOurselves();
                  };
                  QTimer::singleShot(0, QCoreApplication::instance(), kill);
                  QCoreApplication::exec();
              }),
              0);
}

} // namespace
} // namespace veilkeep::test
