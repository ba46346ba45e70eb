#include "session/Relaunching.h"

#include "session/MovedBundle.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

namespace veilkeep::test {
namespace {

TEST(RelaunchingTest, NothingEndsWhereTheProgramIsGone) {
    const ScratchTree tree;
    UserDefaults defaults;
    ScriptedPresenter presenter;
    Alerts alerts(presenter, defaults);
    Relaunching relaunching(
        alerts, {[] { ADD_FAILURE() << "a relaunch"; }, [] { ADD_FAILURE() << "the program would end"; }});
    const std::string bundle = tree.makeDirectory("A.app");
    presenter.expect(
        {"Veilkeep could not be relaunched.", "OK",
         QString::fromStdString(bundle + "/Contents/MacOS/Veilkeep: No such file or directory")});
    relaunching.relaunchFromPath(bundle);
    tree.makeFile("A.app/Contents/MacOS/Veilkeep", "no program", 0755);
    presenter.expect({"Veilkeep could not be relaunched.", "OK"});
    relaunching.relaunchFromPath(bundle);
    presenter.expect({"Veilkeep could not be replaced. The former one is still there.", "OK"});
    relaunching.relaunchAtPath(bundle, tree.path("missing.app"));
    EXPECT_EQ(std::getenv(Relaunching::marker), nullptr);
}

class MovedBundleTest : public ::testing::Test {
protected:
    const ScratchTree m_tree;
};

TEST_F(MovedBundleTest, AnUpdateTakesTheFormerPlace) {
    const std::string path = m_tree.path("A.app"), source = m_tree.path("down/load.app");
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

TEST_F(MovedBundleTest, ASourceThatSharesAPlaceIsRefused) {
    const std::string path = m_tree.path("in/A.app"), aside = m_tree.path("in/Veilkeep.old.app");
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
TEST_F(MovedBundleTest, NothingIsLostWhereTheUpdateCannotBeMoved) {
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

TEST(RelaunchingTest, KillAndRestartGoByTheSignal) {
    const ScratchTree tree;
    const auto endOf = [](const std::function<void()>& body) {
        int status = 0;
        const pid_t child = startChild(body);
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : -WEXITSTATUS(status);
    };
    EXPECT_EQ(endOf([] { Relaunching::killOurselves(); }), SIGTERM);
    for (const auto end : {&Relaunching::killOurselves, &Relaunching::restartOurselves})
        EXPECT_EQ(endOf([&] {
                      ::signal(SIGTERM, SIG_IGN);
                      end(std::chrono::milliseconds(1));
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
