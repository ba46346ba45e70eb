#include "platform/linux/ApplicationOnBus.h"

#include "tests/support/RunProgram.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusPendingCall>

#include <unistd.h>

#include <chrono>
#include <future>
#include <memory>
#include <optional>

namespace veilkeep {
namespace {

using Outcome = ApplicationOnBus::Outcome;

struct Call {
    const char* name;
    const char* method;
    QVariantList arguments;
    QString line; // what the application is told, empty where the call is refused
};

QVariantMap tokens(const QString& newer, const QString& older) {
    return {{"activation-token", newer}, {"desktop-startup-id", older}, {"unknown", QVariantList{1, "two"}}};
}

class ApplicationOnBusTest : public ::testing::Test {
protected:
    void SetUp() override {
        startBus();
        if (!m_bus->whyMissing().empty())
            GTEST_SKIP() << m_bus->whyMissing();
    }

    void startBus() { m_bus = std::make_unique<test::PrivateBus>(m_tree, test::PrivateBus::Place::Session); }
    void stopBus() { m_bus.reset(); }

    void listen() {
        QObject::connect(&application, &ApplicationOnBus::activated,
                         [this](const QString& token) { heard << "show " + token; });
        QObject::connect(&application, &ApplicationOnBus::opened,
                         [this](const OpenRequest& request, const QString& token) {
                             heard << QString("%1 %2 %3 %4")
                                          .arg(request.shows ? "select" : "open")
                                          .arg(request.paths.size())
                                          .arg(request.links.join(','), token);
                         });
    }

    static QDBusMessage call(const QString& method, const QVariantList& arguments) {
        SessionBusConnection bus;
        QDBusMessage message = QDBusMessage::createMethodCall("com.ostrel.Veilkeep", "/com/ostrel/Veilkeep",
                                                              "org.freedesktop.Application", method);
        message.setArguments(arguments);
        const QDBusPendingCall answer = bus.connection().asyncCall(message);
        EXPECT_TRUE(test::turnUntil([&] { return answer.isFinished(); }));
        return answer.reply();
    }

    QString lastHeard() {
        QCoreApplication::processEvents();
        return heard.isEmpty() ? QString() : heard.takeLast();
    }

private:
    test::ScratchTree m_tree;
    std::unique_ptr<test::PrivateBus> m_bus;

protected:
    ApplicationOnBus application;
    QStringList heard;
};

TEST_F(ApplicationOnBusTest, TakesWhatTheDesktopMaySendAndNoMore) {
    ASSERT_EQ(application.start(), Outcome::Primary);
    EXPECT_EQ(application.start(), Outcome::Primary);
    listen();
    const QString longText(64 << 10, 'x');
    const QStringList all(100'000, "veilkeep:a");
    const Call calls[] = {
        {"no token", "Activate", {QVariantMap()}, "show "},
        {"both tokens", "Activate", {tokens("new", "old")}, "show new"},
        {"old senders", "Activate", {tokens("", "old")}, "show old"},
        {"endless token", "Activate", {tokens(longText, "")}, "show "},
        {"nothing to open", "Open", {QStringList(), tokens("t", "")}, "show t"},
        {"files and others",
         "Open",
         {QStringList{"file:///a%FFb", "veilkeep:x?y", "file://elsewhere/a", "file:///%00", "-rf", ""},
          tokens("t", "")},
         "open 1 veilkeep:x?y,file://elsewhere/a,file:///%00,-rf, t"},
        {"as many as there may be", "Open", {all, QVariantMap()}, "open 0 " + all.join(',') + " "},
        {"one more", "Open", {all + QStringList{"veilkeep:"}, QVariantMap()}, {}},
        {"endless URI", "Open", {QStringList{longText + "x"}, QVariantMap()}, {}},
        {"too long together", "Open", {QStringList(257, longText), QVariantMap()}, {}},
        {"items to show",
         "ActivateAction",
         {"show-items", QVariantList{QStringList{"file:///a%FFb", "smb://a/b"}}, tokens("t", "")},
         "select 1 smb://a/b t"},
        {"what is no item", "ActivateAction", {"show-items", QVariantList{3}, QVariantMap()}, {}},
        {"too many to show", "ActivateAction", {"show-items", QVariantList{all + all}, QVariantMap()}, {}},
        {"another action", "ActivateAction", {longText, QVariantList(), QVariantMap()}, {}},
        {"wrong arguments", "Activate", {"text"}, {}},
    };
    for (const Call& one : calls) {
        const QDBusMessage answer = call(one.method, one.arguments);
        EXPECT_EQ(answer.type() == QDBusMessage::ReplyMessage, !one.line.isEmpty()) << one.name;
        EXPECT_EQ(lastHeard(), one.line) << one.name;
    }
}

TEST_F(ApplicationOnBusTest, HandsASecondStartOnToTheFirst) {
    using namespace std::chrono_literals;
    EXPECT_FALSE(ApplicationOnBus::forwardToRunning({}, {})) << "nobody runs";
    ASSERT_EQ(application.start(), Outcome::Primary);
    listen();
    const QStringList uris{"file:///tmp/%FF%0A%25", "veilkeep:show"};
    for (const OpenRequest& request : {OpenRequest(), OpenRequest::fromUris(uris)}) {
        auto second = std::async(std::launch::async,
                                 [&] { return ApplicationOnBus::forwardToRunning(request, "token-1"); });
        EXPECT_TRUE(test::turnUntil([&] { return second.wait_for(0s) == std::future_status::ready; }));
        EXPECT_TRUE(second.get());
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, (QStringList{"show token-1", "open 1 veilkeep:show token-1"}));
    EXPECT_FALSE(ApplicationOnBus::forwardToRunning({}, {}, 50ms)) << "this thread hangs meanwhile";
}

TEST_F(ApplicationOnBusTest, HasItsNameAgainOnANewBusAndGivesItUpAtTheEnd) {
    ASSERT_EQ(application.start(), Outcome::Primary);
    stopBus();
    ASSERT_TRUE(test::turnUntil([this] { return application.start() == Outcome::NoBus; }));
    EXPECT_FALSE(ApplicationOnBus::forwardToRunning({}, {}));
    startBus();
    EXPECT_EQ(application.start(), Outcome::Primary);
    listen();
    EXPECT_EQ(call("Activate", {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(lastHeard(), "show ");
    {
        ApplicationOnBus another;
        EXPECT_EQ(another.start(), Outcome::AnotherRuns);
    }
    EXPECT_EQ(application.start(), Outcome::Primary) << "another's end takes nothing from it";
}

TEST_F(ApplicationOnBusTest, ObeysAndTrustsNobodyElse) {
    if (!test::isRoot())
        GTEST_SKIP() << "needs another user";
    ASSERT_EQ(application.start(), Outcome::Primary);
    listen();
    ASSERT_EQ(::seteuid(test::ordinaryUser), 0);
    std::optional<SessionBusConnection> stranger(std::in_place);
    ASSERT_EQ(::seteuid(0), 0);
    ASSERT_TRUE(stranger->isConnected());
    QDBusMessage message = QDBusMessage::createMethodCall("com.ostrel.Veilkeep", "/com/ostrel/Veilkeep",
                                                          "org.freedesktop.Application", "Activate");
    message << QVariantMap();
    const QDBusPendingCall answer = stranger->connection().asyncCall(message);
    EXPECT_TRUE(test::turnUntil([&] { return answer.isFinished(); }));
    EXPECT_TRUE(answer.isError());
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, QStringList());
}

} // namespace
} // namespace veilkeep
