#include "platform/linux/LinuxSessionEvents.h"

#include "tests/platform/linux/SessionWorld.h"
#include "tests/support/SilentSocket.h"
#include "tests/support/TurnUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusObjectPath>

#include <signal.h>

namespace veilkeep {
namespace {

const QStringList bothHeld = {QStringLiteral("shutdown"), QStringLiteral("sleep")};

class LinuxSessionEventsTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_world.startBuses();
        m_world.startLogind();
        if (!m_world.whyMissing().empty())
            GTEST_SKIP() << m_world.whyMissing();
    }

    test::SessionWorld m_world;
};

// "mate" alone lets the screen saver come, "mate!" lets it go, "mate+" lets it say that it covers the screen.
TEST_F(LinuxSessionEventsTest, TellsOfEachLeavingAndComingBackOnce) {
    const struct {
        const char* what;
        const char* said;
        const char* told;
    } rows[] = {
        {"sleep, each said twice", "sleep+ sleep+ sleep- sleep-", "S+ S-"},
        {"an end without a beginning", "sleep- hint- active+ Unlock mate-", ""},
        {"hint", "hint+ hint+ hint- hint-", "L+ L-"},
        {"session in the background", "active- active+", "A+ A-"},
        {"shutdown, said twice and called off", "shutdown+ shutdown+ shutdown- shutdown+",
         "shutdown shutdown"},
        {"GNOME's proxy", "gnome+ gnome-", "L+ L-"},
        {"freedesktop's on two paths", "free+ free2+ free2- free-", "L+ L-"},
        {"its second path alone", "free2+ free2-", ""},
        {"Cinnamon", "cinnamon+ cinnamon-", "L+ L-"},
        {"MATE", "mate+ mate+ mate- mate-", "L+ L-"},
        {"Xfce", "xfce+ xfce-", "L+ L-"},
        {"somebody else at the same path", "stranger+", ""},
        {"two savers, doubled", "free+ gnome+ free- gnome-", "L+ L-"},
        {"a saver that vanishes", "mate+ mate!", "L+ L-"},
        {"vanishes while the hint says locked", "mate+ hint+ mate! hint-", "L+ L-"},
        {"GNOME Shell covers without locking", "shell shell+ gnome+ gnome- shell-", ""},
        {"GNOME Shell locks", "shell hint+ shell+ shell- hint-", "L+ L-"},
        {"Plasma covers without locking", "kde free+ free-", ""},
        {"covers without locking once the hint was seen", "mate+ hint+ hint- mate- mate+ mate-", "L+ L-"},
        {"only the wish to lock", "Lock Lock Unlock", "L+ L-"},
        {"the wish, then the lock", "Lock mate+ mate-", "L+ L-"},
        {"the wish, then the hint", "Lock hint+ hint-", "L+ L-"},
        {"a wish that GNOME does not follow", "shell Lock", ""},
        {"the wish, then back at the session", "Lock active- active+", "L+ A+ L- A-"},
        {"locks on sleeping, unlocked after", "sleep+ hint+ sleep- hint-", "S+ L+ S- L-"},
        {"locks before sleeping", "mate+ sleep+ sleep- mate-", "L+ S+ S- L-"},
        {"wakes only when unlocked", "sleep+ hint+ hint-", "S+ L+ S- L-"},
        {"wakes only when asked to unlock", "sleep+ Unlock sleep-", "S+ S-"},
        {"wakes only when back in the session", "active- sleep+ active+", "A+ S+ S- A-"},
        {"all at once", "Lock hint+ mate+ active- sleep+ sleep- active+ mate- hint- Unlock",
         "L+ A+ S+ S- A- L-"},
        {"signals", "TERM HUP INT TERM", "signal"},
        {"signals after the first was dealt with", "TERM release INT", "signal signal"},
        {"signal during a sleep", "sleep+ TERM sleep-", "S+ signal S-"},
    };
    for (const auto& row : rows) {
        m_world.listen();
        m_world.settle();
        m_world.sayAll(row.said);
        EXPECT_EQ(m_world.told, row.told) << row.what << ": " << row.said;
        m_world.calmDown();
    }
}

TEST_F(LinuxSessionEventsTest, HoldsUpWhatIsUnderWayUntilReleased) {
    const struct {
        const char* said;
        const char* held; // soon after
    } rows[] = {
        {"hint+ release", "shutdown sleep"},
        {"sleep+", "shutdown sleep"},
        {"sleep+ release sleep+ release", "shutdown"},
        {"sleep+ release sleep- sleep-", "shutdown sleep"},
        {"sleep+ release Unlock", "shutdown sleep"},
        {"sleep+ sleep- release", "shutdown sleep"},
        {"shutdown+ release", "sleep"},
        {"shutdown+ release shutdown-", "shutdown sleep"},
        {"sleep+ shutdown+ release", ""},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(test::waitUntil([&] { return m_world.logind->inhibitors().isEmpty(); }));
        m_world.listen();
        m_world.settle();
        m_world.sayAll(row.said);
        const QString held = QString::fromLatin1(row.held);
        EXPECT_TRUE(test::waitUntil([&] { return m_world.logind->inhibitors().join(' ') == held; },
                                    std::chrono::milliseconds(100)))
            << row.said << ": " << m_world.logind->inhibitors().join(' ').toStdString();
        m_world.calmDown();
    }
}

TEST_F(LinuxSessionEventsTest, FindsOutThatTheSystemIsAwakeWithoutBeingTold) {
    m_world.listen();
    m_world.settle();
    m_world.sayAll("sleep+ release");
    EXPECT_FALSE(test::turnUntil([&] { return m_world.told != "S+"; }, std::chrono::milliseconds(200)))
        << "too soon";
    m_world.logind->setPreparing("Sleep", false);
    EXPECT_TRUE(test::turnUntil([&] { return m_world.told == "S+ S-"; }));
    EXPECT_TRUE(test::turnUntil([&] { return m_world.logind->inhibitors() == bothHeld; }));

    m_world.say("sleep+");
    m_world.stopLogind();
    EXPECT_TRUE(test::turnUntil([&] { return m_world.told == "S+ S- S+ S-"; }));
}

TEST_F(LinuxSessionEventsTest, FindsWhatCameAgain) {
    struct Row {
        const char* what;
        bool isBusRestarted;
        const char* before;
        const char* parameters; // of logind when it comes again
        void (*meanwhile)(test::FakeLogind&);
        const char* told;
    };
    constexpr auto unchanged = [](test::FakeLogind&) {};
    constexpr auto locked = [](test::FakeLogind& logind) { logind.set("LockedHint", true); };
    const Row rows[] = {
        {"logind", false, "", "{}", unchanged, ""},
        {"both buses", true, "", "{}", unchanged, ""},
        {"locked meanwhile", false, "", "{}", locked, "L+"},
        {"unlocked meanwhile", true, "hint+", "{}", unchanged, "L+ L-"},
        {"still locked", true, "hint+", "{}", locked, "L+"},
        {"the screen saver left with the bus", true, "mate+", "{}", unchanged, "L+ L-"},
        {"to sleep meanwhile", true, "", R"({"PreparingForSleep": true})", unchanged, "S+"},
        {"awake meanwhile", true, "sleep+ release", "{}", unchanged, "S+ S-"},
        {"away meanwhile", false, "", "{}", [](test::FakeLogind& logind) { logind.set("Active", false); },
         "A+"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        m_world.listen();
        m_world.settle();
        m_world.sayAll(row.before);
        if (row.isBusRestarted)
            m_world.stopBuses();
        m_world.stopLogind();
        if (row.isBusRestarted)
            m_world.startBuses();
        m_world.startLogind(row.parameters, row.meanwhile);
        EXPECT_TRUE(test::turnUntil([&] {
            return m_world.told == row.told && m_world.logind->inhibitors() == bothHeld;
        })) << m_world.told;
        m_world.settle();
        EXPECT_EQ(m_world.told, row.told);
        m_world.calmDown();
    }
}

TEST_F(LinuxSessionEventsTest, ListensToTheUsersOwnSession) {
    const QString c2 = test::logindSessions + "c2";
    const struct {
        const char* what;
        const char* found;    // by the name that GetSession is asked for: a Python dictionary
        QString display;      // of the user
        const char* variable; // XDG_SESSION_ID
        const char* heard;
    } rows[] = {
        {"the caller's", "{'auto': 'c2'}", {}, "", "c2"},
        {"the caller's is the manager's", "{'auto': 'm1'}", c2, "", "c2"},
        {"the caller's is unknown", "{}", c2, "m1", "c2"},
        {"only the variable", "{'c2': 'c2'}", {}, "c2", "c2"},
        {"only the variable, of the manager's", "{'m1': 'm1'}", {}, "m1", ""},
        {"none", "{}", {}, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        m_world.logind->answer(
            "GetSession", "s o",
            QStringLiteral("ret = '%1' + %2[args[0]]").arg(test::logindSessions, row.found));
        m_world.logind->setDisplay(row.display);
        ::setenv("XDG_SESSION_ID", row.variable, 1);
        m_world.listen();
        m_world.settle();
        std::string heard;
        for (const char* const session : {"c2", "m1"}) {
            m_world.logind->emitSignal("Lock", test::logindSessions + session);
            m_world.settle();
            if (m_world.told == "L+")
                heard += session;
            m_world.logind->emitSignal("Unlock", test::logindSessions + session);
            m_world.settle();
            m_world.told.clear();
        }
        EXPECT_EQ(heard, row.heard);
        m_world.calmDown();
    }
    ::unsetenv("XDG_SESSION_ID");
}

TEST_F(LinuxSessionEventsTest, FollowsTheUserToANewSession) {
    m_world.listen();
    m_world.settle();
    const QDBusObjectPath c2(test::logindSessions + "c2");
    m_world.logind->answer("GetSession", "s o", "ret = {}[args[0]]");
    m_world.logind->emitManagerSignal("SessionRemoved", "so", {"c2", QVariant::fromValue(c2)});
    m_world.settle();
    EXPECT_EQ(m_world.told, "A+");
    m_world.logind->answer("GetSession", "s o", "ret = '" + c2.path() + "'");
    m_world.logind->emitManagerSignal("SessionNew", "so", {"c2", QVariant::fromValue(c2)});
    m_world.settle();
    m_world.say("hint+");
    EXPECT_EQ(m_world.told, "A+ A- L+");
}

TEST_F(LinuxSessionEventsTest, WaitsForNobodyWhoIsSilent) {
    ::kill(m_world.logind->process(), SIGSTOP);
    m_world.listen();
    EXPECT_FALSE(test::turnUntil([&] { return !m_world.told.empty(); }, std::chrono::milliseconds(100)));
    ::kill(m_world.logind->process(), SIGCONT);
    EXPECT_TRUE(test::turnUntil([&] { return m_world.logind->inhibitors() == bothHeld; }));
    m_world.settle();
    m_world.say("hint+");
    EXPECT_EQ(m_world.told, "L+");
}

// A system bus that takes connections and says nothing, and no session bus.
TEST(LinuxSessionEventsWithoutBus, BlocksNothingAndTakesTheBusIn) {
    test::SessionWorld world;
    const std::string address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS").toStdString();
    test::ScratchTree tree;
    UniqueFd silent = test::listenAt(tree.path("bus"));
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + tree.path("bus")).c_str(), 1);
    world.listen();
    ::raise(SIGTERM);
    EXPECT_TRUE(test::turnUntil([&] { return world.told == "signal"; })) << "needs no bus";

    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
    world.startBuses();
    silent.reset();
    world.startLogind();
    if (!world.whyMissing().empty())
        GTEST_SKIP() << world.whyMissing();
    EXPECT_TRUE(test::turnUntil([&] { return world.logind->inhibitors() == bothHeld; }));
    world.settle();
    world.sayAll("hint+ hint- mate mate+");
    EXPECT_EQ(world.told, "signal L+ L-");
}

TEST(LinuxSessionEventsUnderNohup, LeavesWhatIsIgnored) {
    test::SessionWorld world;
    const auto beforeHangup = ::signal(SIGHUP, SIG_IGN);
    const auto beforeTermination = ::signal(SIGTERM, SIG_DFL);
    world.listen();
    ::raise(SIGHUP);
    ::raise(SIGINT);
    EXPECT_TRUE(test::turnUntil([&] { return world.told == "signal"; }));
    world.events->release();
    ::raise(SIGHUP);
    QCoreApplication::processEvents();
    EXPECT_EQ(world.told, "signal");
    world.events.reset();
    EXPECT_EQ(::signal(SIGHUP, beforeHangup), SIG_IGN);
    EXPECT_EQ(::signal(SIGTERM, beforeTermination), SIG_DFL) << "not put back";
}

} // namespace
} // namespace veilkeep
