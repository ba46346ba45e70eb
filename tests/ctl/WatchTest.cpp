#include "core/base/UniqueFd.h"
#include "platform/Request.h"
#include "tests/ctl/CtlCalls.h"
#include "tests/session/LeavingWorld.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/FakeLogind.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace veilkeep::test {
namespace {

// "veilkeepctl watch" as a process, on buses of the test's own, with three items in an AutoHide group.
class WatchTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const std::string& why :
             {m_systemBus.whyMissing(), m_sessionBus->whyMissing(), m_logind.whyMissing()})
            if (!why.empty())
                GTEST_SKIP() << why;
        m_logind.showSession();
        m_world.makeItems();
    }

    // Both streams of the program go into a file.
    void startWatch(const std::string& logged = "Watching for") {
        const std::string log = m_tree.makeFile("home/.local/state/Veilkeep/Veilkeep.log");
        m_watch = std::make_unique<BackgroundProgram>(
            std::vector<std::string>{"/bin/sh", "-c", "exec \"$0\" watch >>\"$1\" 2>&1",
                                     bundledProgram("veilkeepctl"), m_tree.path("told")});
        EXPECT_TRUE(waitUntil([&] { return readFile(log).find(logged) != std::string::npos; }));
    }

    // Its exit status; -1 where the signal killed it.
    int endWatch(int signal) { return m_watch->end(signal); }

    bool becomeVisible() {
        return waitUntil([this] { return m_world.areVisible(); });
    }
    bool becomeHidden() {
        return waitUntil([this] { return m_world.areHidden(); });
    }
    bool areHeldUp(const QStringList& what) {
        return waitUntil([&] { return m_logind.inhibitors() == what; });
    }

    ProgramRun ctl(const std::vector<std::string>& arguments) { return runCtl(arguments, m_tree.root()); }

    ScratchTree m_tree;
    PrivateBus m_systemBus{m_tree, PrivateBus::Place::System};
    std::optional<PrivateBus> m_sessionBus{std::in_place, m_tree, PrivateBus::Place::Session};
    FakeLogind m_logind{"{}"};
    LeavingWorld m_world{m_tree};
    std::unique_ptr<BackgroundProgram> m_watch;
};

TEST_F(WatchTest, HidesOnLeavingAndShowsOnComingBack) {
    m_logind.set("Active", false); // away from the beginning
    startWatch();
    EXPECT_FALSE(waitUntil([this] { return m_world.areVisible(); }, 3 * Presence::quiet));
    m_logind.set("Active", true);
    EXPECT_TRUE(becomeVisible());
    BusService saver(
        QStringLiteral("org.mate.ScreenSaver"),
        [](const QDBusMessage& call) { return call.createErrorReply(QDBusError::UnknownMethod, {}); },
        QDBusConnection::SessionBus);
    const std::function<void(bool)> sources[] = {
        [&](bool away) { m_logind.announce("Sleep", away); },
        [&](bool away) { m_logind.set("Active", !away); },
        [&](bool away) {
            saver.connection().send(
                QDBusMessage::createSignal("/org/mate/ScreenSaver", "org.mate.ScreenSaver", "ActiveChanged")
                << away);
        },
        [&](bool away) { m_logind.set("LockedHint", away); },
    };
    for (const auto& source : sources) {
        EXPECT_TRUE(areHeldUp({"shutdown", "sleep"}));
        source(true);
        EXPECT_TRUE(becomeHidden());
        if (&source == &sources[0]) {
            EXPECT_TRUE(areHeldUp({"shutdown"}));
        }
        source(false);
        EXPECT_TRUE(becomeVisible());
    }
    EXPECT_NE(ctl({"status"}).output.find("hidden\t0\n"), std::string::npos);
}

// Both at its start and while it runs, when it stores what nobody had decided yet.
TEST_F(WatchTest, TellsThatTheSettingsWereDamaged) {
    const auto damage = [this] { m_tree.makeFile("home/.config/com.ostrel.Veilkeep.plist", "<plist"); };
    const auto timesTold = [this] {
        const std::string told = readFile(m_tree.path("told")), text = "settings were damaged";
        std::size_t count = 0;
        for (auto place = told.find(text); place != std::string::npos; place = told.find(text, place + 1))
            ++count;
        return count;
    };
    damage();
    startWatch();
    EXPECT_TRUE(waitUntil([&] { return timesTold() == 1; }));
    EXPECT_TRUE(becomeVisible());
    damage();
    m_logind.set("Active", false);
    EXPECT_TRUE(becomeHidden());
    m_logind.set("Active", true);
    EXPECT_TRUE(becomeVisible());
    EXPECT_EQ(timesTold(), 2U);
    EXPECT_EQ(endWatch(SIGTERM), 0);
}

TEST_F(WatchTest, EndsHiddenWithoutAWord) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        startWatch();
        EXPECT_TRUE(becomeVisible());
        EXPECT_EQ(endWatch(signal), 0);
        EXPECT_TRUE(m_world.areHidden());
    }
    startWatch();
    EXPECT_TRUE(becomeVisible());
    m_logind.announce("Shutdown", true);
    EXPECT_EQ(endWatch(0), 0);
    EXPECT_TRUE(m_world.areHidden());
    EXPECT_EQ(readFile(m_tree.path("told")), "");
}

// Whoever ended it left no time for a pass.
TEST_F(WatchTest, HidesWhatACrashLeftVisible) {
    startWatch();
    EXPECT_TRUE(becomeVisible());
    EXPECT_EQ(endWatch(SIGKILL), -1);
    ASSERT_TRUE(m_world.areVisible());
    m_world.setPassword(); // or it would show them again
    startWatch();
    EXPECT_TRUE(becomeHidden());
    m_logind.announce("Sleep", true);
    m_logind.announce("Sleep", false);
    EXPECT_TRUE(areHeldUp({"shutdown", "sleep"}));
    EXPECT_TRUE(m_world.areHidden());
    const std::string program = bundledProgram("veilkeepctl");
    EXPECT_EQ(runProgram({"/bin/sh", "-c", "echo \"$1\" | \"$0\" autounhide --password-stdin", program,
                          LeavingWorld::password})
                  .exitStatus,
              0);
    EXPECT_TRUE(m_world.areVisible());
    EXPECT_EQ(ctl({"autohide"}).exitStatus, 0);
    EXPECT_TRUE(m_world.areHidden());
    EXPECT_EQ(endWatch(SIGTERM), 0);
}

// A program that asks for the list has it until it ends, however it ends.
TEST_F(WatchTest, GivesTheListAndTakesItBack) {
    startWatch();
    EXPECT_TRUE(becomeVisible());
    auto application = std::make_unique<BackgroundProgram>(std::vector<std::string>{VEILKEEP_LIST_OWNER});
    EXPECT_EQ(application->readLine(), "serves");
    EXPECT_EQ(m_logind.inhibitors(), QStringList());
    m_logind.announce("Sleep", true);
    m_logind.announce("Sleep", false);
    EXPECT_EQ(ctl({"status"}).exitStatus, 0);
    EXPECT_TRUE(m_world.areVisible()); // the leaving is the application's to see
    EXPECT_EQ(application->end(SIGKILL), -1);
    EXPECT_TRUE(areHeldUp({"shutdown", "sleep"}));
    EXPECT_TRUE(becomeHidden()); // the application left them visible
    EXPECT_EQ(ctl({"status"}).exitStatus, 0);
    EXPECT_EQ(endWatch(SIGTERM), 0);

    application = std::make_unique<BackgroundProgram>(std::vector<std::string>{VEILKEEP_LIST_OWNER});
    EXPECT_EQ(application->readLine(), "serves");
    startWatch("waiting for its end");
    EXPECT_EQ(endWatch(SIGTERM), 0);
}

// A command that waits for the password when the user leaves keeps nothing from being hidden.
TEST_F(WatchTest, TakesBackAPromptThatIsOpen) {
    m_world.setPassword();
    startWatch();
    m_sessionBus.reset(); // requests are heard on the next one as well
    m_sessionBus.emplace(m_tree, PrivateBus::Place::Session);
    EXPECT_TRUE(
        waitUntil([this] { return ctl({"status"}).output.find("owner\tapplication") != std::string::npos; }));
    const std::string input = m_tree.path("input"), told = m_tree.path("told");
    ASSERT_EQ(::mkfifo(input.c_str(), 0600), 0);
    const UniqueFd typing(::open(input.c_str(), O_RDWR | O_CLOEXEC)); // and nobody types
    const std::function<void()> leavings[] = {
        [this] {
            m_logind.announce("Sleep", true);
            m_logind.announce("Sleep", false);
        },
        [this] { EXPECT_EQ(ctl({"autohide"}).exitStatus, 0); },
    };
    for (const auto& leave : leavings) {
        BackgroundProgram command({"/bin/sh", "-c",
                                   "exec \"$0\" unhide --password-stdin \"$1\" <\"$2\" 2>\"$3\"",
                                   bundledProgram("veilkeepctl"), m_tree.path("t/a"), input, told});
        EXPECT_TRUE(waitUntil([&] {
            leave(); // until the prompt was there to be taken back
            return readFile(told).find("The password was not given.") != std::string::npos;
        }));
        EXPECT_EQ(command.end(0), static_cast<int>(RequestStatus::Refused));
        EXPECT_TRUE(m_world.areHidden());
        writeFile(told, {});
    }
    EXPECT_TRUE(areHeldUp({"shutdown", "sleep"}));
}

TEST(WatchUnitTest, SystemdUnderstandsTheUnit) {
    if (::access("/usr/bin/systemd-analyze", X_OK) != 0)
        GTEST_SKIP() << "systemd-analyze is not installed";
    const ScratchTree tree;
    std::string text = readFile(VEILKEEP_WATCH_UNIT);
    const std::string installed = VEILKEEP_INSTALLED_PROGRAMS "/veilkeepctl";
    ASSERT_NE(text.find(installed + " watch\n"), std::string::npos);
    text.replace(text.find(installed), installed.size(), bundledProgram("veilkeepctl"));
    const std::string unit = tree.makeFile("veilkeep-watch.service", text);
    const std::string runtime = tree.makeDirectory("run");
    const ProgramRun run =
        runProgram({"/usr/bin/systemd-analyze", "verify", "--user", "--man=no", unit},
                   {0, tree.root(), [&] { ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1); }});
    EXPECT_EQ(run.output + run.errors, "");
    EXPECT_EQ(run.exitStatus, 0);
}

// systemd.exec(5): in a user's manager these set NoNewPrivileges=, or need a user namespace, in which root is
// nobody.
TEST(WatchUnitTest, NoSettingKeepsPkexecFromItsRights) {
    const std::string text = readFile(VEILKEEP_WATCH_UNIT);
    ASSERT_NE(text.find("\n[Service]\n"), std::string::npos);
    for (const std::string setting :
         {"NoNewPrivileges", "DynamicUser", "LockPersonality", "MemoryDenyWriteExecute", "Private", "Protect",
          "Restrict", "SystemCall", "CapabilityBoundingSet", "ReadOnlyPaths", "ReadWritePaths",
          "InaccessiblePaths", "NoExecPaths", "ExecPaths", "TemporaryFileSystem", "Bind", "Root",
          "MountAPIVFS"})
        EXPECT_EQ(text.find("\n" + setting), std::string::npos) << setting;
}

} // namespace
} // namespace veilkeep::test
