#include "platform/linux/checkup/BusCheckup.h"

#include "platform/linux/PolkitTypes.h"
#include "platform/linux/checkup/BusHello.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/SilentSocket.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/FakeLogind.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

#include <chrono>
#include <map>
#include <optional>
#include <thread>

namespace veilkeep::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Answer = PolkitFacts::Answer;
using Bus = QDBusConnection;

constexpr BusCheckupLimits generous{milliseconds(20'000), milliseconds(20'000)};
constexpr BusCheckupLimits brief{milliseconds(20'000), milliseconds(300)};
constexpr milliseconds longestCheckup{10'000}; // far from both, since the machine may be busy

// Both buses, their services on top.
class BusCheckupTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const PrivateBus* bus : {&m_system, &m_session})
            if (!bus->whyMissing().empty())
                GTEST_SKIP() << bus->whyMissing();
        ::unsetenv("XDG_SESSION_ID");
    }

    void serve(const char* name, BusService::Handler handler, Bus::BusType bus = Bus::SystemBus) {
        services.emplace(name, std::make_unique<BusService>(QLatin1String(name), std::move(handler), bus));
    }

    ScratchTree tree;
    std::string started = tree.path("started");
    std::string m_services = servicesThatLeaveATrace();
    PrivateBus m_system{tree, PrivateBus::Place::System, m_services};
    PrivateBus m_session{tree, PrivateBus::Place::Session, m_services};
    std::map<std::string, std::unique_ptr<BusService>> services;

private:
    std::string servicesThatLeaveATrace() {
        const std::string program = tree.makeFile("service", "#!/bin/sh\n: > '" + started + "'\n", 0755);
        for (const char* const name : {"org.freedesktop.PolicyKit1", "org.freedesktop.login1",
                                       "org.freedesktop.UDisks2", "org.kde.StatusNotifierWatcher"})
            tree.makeFile(std::string("services/") + name + ".service",
                          std::string("[D-BUS Service]\nName=") + name + "\nExec=" + program + "\n");
        return tree.path("services");
    }
};

QDBusMessage noAnswer(const QDBusMessage&) {
    return {};
}
BusService::Handler always(const QVariant& value) {
    return [value](const QDBusMessage& call) { return call.createReply(value); };
}
QVariant boxed(bool value) {
    return QVariant::fromValue(QDBusVariant(value));
}

TEST_F(BusCheckupTest, NobodyIsThereAndNobodyIsStarted) {
    const BusesFacts facts = askBuses(generous);
    EXPECT_EQ(facts.session.reach, BusReach::Reached);
    EXPECT_TRUE(facts.session.areNamesTold);
    EXPECT_FALSE(facts.session.isTrayThere);
    EXPECT_TRUE(facts.session.screenSavers.empty());
    EXPECT_TRUE(facts.system.areNamesTold);
    EXPECT_EQ(facts.system.logind.service, ServiceState::Startable);
    EXPECT_EQ(facts.system.polkit.service, ServiceState::Startable);
    EXPECT_EQ(facts.system.polkit.answer, Answer::None);
    EXPECT_EQ(facts.system.udisks, ServiceState::Startable);
    EXPECT_EQ(facts.system.packageKit, ServiceState::Absent);
    EXPECT_FALSE(exists(started));
}

TEST_F(BusCheckupTest, EverybodyIsThere) {
    FakeLogind logind("{}");
    if (!logind.whyMissing().empty())
        GTEST_SKIP() << logind.whyMissing();
    logind.showSession();
    registerPolkitTypes();
    serve("org.freedesktop.PolicyKit1", always(QVariant::fromValue(PolkitResult{false, true, {}})));
    serve("org.freedesktop.PackageKit", noAnswer);
    serve("org.kde.StatusNotifierWatcher", always(boxed(true)), Bus::SessionBus);
    serve("org.gnome.Shell.ScreenShield", always(false), Bus::SessionBus);
    serve("com.ostrel.Veilkeep", noAnswer, Bus::SessionBus);
    const BusesFacts facts = askBuses(generous);
    EXPECT_EQ(facts.session.hasTrayHost, true);
    ASSERT_EQ(facts.session.screenSavers.size(), 1U);
    EXPECT_TRUE(facts.session.screenSavers[0].hasAnswered);
    EXPECT_TRUE(facts.session.isHintingLockerThere);
    EXPECT_TRUE(facts.session.isApplicationThere);
    EXPECT_FALSE(facts.session.isListServed);
    EXPECT_EQ(facts.system.logind.service, ServiceState::Running);
    EXPECT_EQ(facts.system.logind.isSessionFound, true);
    EXPECT_EQ(facts.system.logind.isLockTold, true);
    EXPECT_EQ(facts.system.logind.canHoldSleep, true);
    EXPECT_EQ(logind.inhibitors(), QStringList());
    EXPECT_EQ(facts.system.polkit.answer, Answer::AfterQuestion);
    EXPECT_EQ(facts.system.packageKit, ServiceState::Running);
}

// Those who hang take no more than their time, and what they would have said stays unknown; so it does with
// answers of wrong types.
TEST_F(BusCheckupTest, WhoeverHangsOrTalksRubbishHasToldNothing) {
    const BusService::Handler handlers[] = {
        noAnswer,
        always(QStringLiteral("rubbish")),
        always(QVariant::fromValue(QDBusVariant(QStringLiteral("rubbish")))),
        always(QVariantMap{{QStringLiteral("rubbish"), 1}}),
        [](const QDBusMessage& call) { return call.createReply(); },
    };
    for (const auto& handler : handlers) {
        services.clear();
        serve("org.freedesktop.login1", handler);
        serve("org.freedesktop.PolicyKit1", handler);
        serve("org.kde.StatusNotifierWatcher", handler, Bus::SessionBus);
        serve("org.mate.ScreenSaver", handler, Bus::SessionBus);
        const auto begin = steady_clock::now();
        const BusesFacts facts = askBuses(brief);
        EXPECT_LT(steady_clock::now() - begin, longestCheckup);
        EXPECT_TRUE(facts.session.isTrayThere);
        EXPECT_EQ(facts.session.hasTrayHost, std::nullopt);
        ASSERT_EQ(facts.session.screenSavers.size(), 1U);
        EXPECT_FALSE(facts.session.screenSavers[0].hasAnswered);
        EXPECT_EQ(facts.system.logind.service, ServiceState::Running);
        EXPECT_NE(facts.system.logind.isSessionFound, true);
        EXPECT_EQ(facts.system.logind.canHoldSleep, std::nullopt);
        EXPECT_EQ(facts.system.polkit.answer, Answer::None);
    }
}

TEST_F(BusCheckupTest, RefusalsAreTold) {
    serve("org.freedesktop.login1", [](const QDBusMessage& call) {
        return call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("Permission denied"));
    });
    serve("org.freedesktop.PolicyKit1", [](const QDBusMessage& call) {
        return call.createErrorReply(QStringLiteral("org.freedesktop.PolicyKit1.Error.Failed"),
                                     QStringLiteral("Action com.ostrel.Veilkeep.move is not registered"));
    });
    const BusesFacts facts = askBuses(generous);
    EXPECT_EQ(facts.system.logind.isSessionFound, false);
    EXPECT_EQ(facts.system.logind.canHoldSleep, false);
    EXPECT_EQ(facts.system.logind.whyNot, "Permission denied");
    EXPECT_EQ(facts.system.polkit.answer, Answer::UnknownAction);
}

TEST(BusHelloTest, ABusIsWhoeverAnswersAsOne) {
    const ScratchTree tree;
    EXPECT_EQ(sayHelloTo({}, generous.hello), BusReach::Missing);
    EXPECT_EQ(sayHelloTo("unix:path=" + tree.path("none"), generous.hello), BusReach::Missing);
    EXPECT_EQ(sayHelloTo("tcp:host=192.0.2.1,port=1", generous.hello), BusReach::Elsewhere);
    const std::string path = tree.path("bus");
    const UniqueFd listening = listenAt(path);
    ASSERT_TRUE(listening);
    const struct {
        const char* name;
        std::string says;
        BusReach reach;
    } rows[] = {
        {"silence", {}, BusReach::NotAnswered},
        {"hangs after the login", "OK 0123\r\n", BusReach::NotAnswered},
        {"lets nobody in", "REJECTED EXTERNAL\r\n", BusReach::NotAnswered},
        {"rubbish without an end", std::string(10'000, 'x'), BusReach::NotAnswered},
        {"a bus", std::string("OK 0123\r\nl\2\0\1", 13), BusReach::Reached},
    };
    for (const auto& row : rows) {
        UniqueFd peer;
        std::thread answering([&] {
            peer.reset(::accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC));
            EXPECT_EQ(::send(peer.get(), row.says.data(), row.says.size(), MSG_NOSIGNAL),
                      static_cast<ssize_t>(row.says.size()));
        });
        const bool answers = row.says.size() > 9;
        const auto begin = steady_clock::now();
        EXPECT_EQ(sayHelloTo("unix:path=" + path, answers ? generous.hello : milliseconds(50)), row.reach)
            << row.name;
        EXPECT_LT(steady_clock::now() - begin, longestCheckup) << row.name;
        answering.join();
    }
}

} // namespace
} // namespace veilkeep::test
