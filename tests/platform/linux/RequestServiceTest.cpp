#include "platform/linux/RequestService.h"

#include "platform/linux/BusRequest.h"
#include "platform/linux/RequestClient.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace veilkeep {
namespace {

using Failure = RequestClient::Failure;
using Items = std::vector<std::pair<std::string, std::string>>;

// Remembers what it is told.
class Caller : public RequestCaller {
public:
    void itemDone(const std::string& path, const std::string& newPath) override {
        done.emplace_back(path, newPath);
    }
    void itemFailed(const std::string& path, const QString& reason) override {
        failed.emplace_back(path, reason.toStdString());
    }
    void message(const QString& text) override { messages.append(text); }
    void listed(const std::vector<QVariantMap>& told) override {
        rows.insert(rows.end(), told.begin(), told.end());
    }
    void progress(const QString& stage, const QString& subStage, std::size_t count,
                  std::size_t total) override {
        progressed = stage + subStage + QString::number(count) + "/" + QString::number(total);
    }
    std::size_t ask(const Question& question) override {
        asked = question;
        questions << question.title;
        isTakenBack = false;
        if (whileAsking)
            whileAsking();
        if (whileAsking || question.title == "first") {
            EXPECT_TRUE(test::turnUntil([this] { return isTakenBack; }));
        }
        return answer;
    }
    std::optional<QString> askPassword(const QString&, int) override { return std::nullopt; }
    void cancelQuestion() override { isTakenBack = true; }
    bool isCancelled() const override { return cancelsOn && messages.contains(*cancelsOn); }

    Items done, failed;
    QStringList messages;
    std::vector<QVariantMap> rows;
    QString progressed;
    Question asked;
    QStringList questions;
    bool isTakenBack = false;
    std::size_t answer = 0;
    std::function<void()> whileAsking; // and then it waits for the question to be taken back
    std::optional<QString> cancelsOn;
};

class RequestServiceTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
    }

    void startOwner(const char* role = "owner") {
        m_owner.emplace(std::vector<std::string>{VEILKEEP_REQUEST_PEER, role});
        ASSERT_EQ(m_owner->readLine(), "serves");
    }

    std::optional<RequestStatus> run(const char* command, std::vector<std::string> paths = {}) {
        return m_client.run({command, std::move(paths), {}}, m_caller);
    }

    test::ScratchTree m_tree;
    test::PrivateBus m_bus{m_tree, test::PrivateBus::Place::Session};
    std::optional<test::BackgroundProgram> m_owner;
    RequestClient m_client;
    Caller m_caller;
};

TEST_F(RequestServiceTest, BringsEverythingThereAndBackByteByByte) {
    startOwner();
    ASSERT_TRUE(m_client.isServed());
    const QByteArrayList list = {"/x\xff", ""};
    const Request request = {
        "echo",
        {"/a\xff\xfe", "/b\n%1"},
        {{"bytes", QByteArray("\xff\0z", 3)}, {"list", QVariant::fromValue(list)}, {"flag", true}}};
    EXPECT_EQ(m_client.run(request, m_caller), RequestStatus::SomeFailed);
    EXPECT_EQ(m_caller.done, (Items{{"/a\xff\xfe", "/a\xff\xfe'"}, {"/b\n%1", "/b\n%1'"}}));
    EXPECT_EQ(m_caller.failed, (Items{{"/failed\xfe", "why"}}));
    ASSERT_EQ(m_caller.rows.size(), 2U);
    EXPECT_EQ(m_caller.rows[0], request.options);
    EXPECT_EQ(m_caller.rows[1].value("count"), QVariant(7ULL));
    EXPECT_EQ(m_caller.progressed, "stagepart1/2");
}

TEST_F(RequestServiceTest, BringsQuestionsToTheCallerAndItsAnswersBack) {
    startOwner();
    const std::pair<std::size_t, RequestStatus> rows[] = {
        {0, RequestStatus::Refused}, {1, RequestStatus::AllWell}, {99, RequestStatus::Refused}};
    for (const auto& [answer, status] : rows) {
        m_caller.answer = answer;
        EXPECT_EQ(run("ask"), status) << answer;
        EXPECT_EQ(m_owner->readLine(), "begins ask");
        EXPECT_EQ(m_owner->readLine(), "answered " + std::to_string(std::min<std::size_t>(answer, 2)));
    }
    EXPECT_EQ(m_caller.asked.buttons, (std::vector<QString>{"Yes", "Perhaps", "No"}));
}

TEST_F(RequestServiceTest, TakesAQuestionBackBeforeItAsksTheNext) {
    startOwner();
    EXPECT_EQ(run("ask and take back"), RequestStatus::AllWell);
    EXPECT_EQ(m_owner->readLine(), "begins ask and take back");
    EXPECT_EQ(m_owner->readLine(), "1 0");
    EXPECT_EQ(m_caller.questions, QStringList({"first", "second"}));
}

TEST_F(RequestServiceTest, AnswersWithTheLastButtonForACallerThatDied) {
    startOwner();
    {
        test::BackgroundProgram client({VEILKEEP_REQUEST_PEER, "client", "ask"});
        ASSERT_EQ(client.readLine(), "asked");
    }
    EXPECT_EQ(m_owner->readLine(), "begins ask");
    EXPECT_EQ(m_owner->readLine(), "answered 2, cancelled");
    EXPECT_EQ(run("other"), RequestStatus::WrongUsage) << "the next one has its turn";
}

TEST_F(RequestServiceTest, PassesCancellingOnWhileTheHandlerKeepsItsEventLoopFromRunning) {
    startOwner();
    m_caller.cancelsOn = "waits";
    EXPECT_EQ(run("wait"), RequestStatus::SomeFailed);
}

TEST_F(RequestServiceTest, TellsOwnersThatEndedFromThoseThatWereNeverThere) {
    EXPECT_FALSE(m_client.isServed());
    EXPECT_EQ(run("echo"), std::nullopt);
    EXPECT_EQ(m_client.failure(), Failure::NotServed);
    startOwner();
    EXPECT_EQ(run("die"), std::nullopt);
    EXPECT_EQ(m_client.failure(), Failure::Vanished);
    EXPECT_FALSE(m_client.isServed());
    startOwner();
    m_caller.whileAsking = [this] { m_owner.reset(); };
    EXPECT_EQ(run("ask"), std::nullopt);
    EXPECT_EQ(m_client.failure(), Failure::Vanished);
}

TEST_F(RequestServiceTest, GivesUpOnAnOwnerThatHangs) {
    startOwner("hung");
    RequestClient client(std::chrono::milliseconds(100));
    EXPECT_EQ(client.run({"echo", {}, {}}, m_caller), RequestStatus::OwnerSilent);
}

// Speaks to the owner without the client's care.
class RawCallerTest : public RequestServiceTest {
protected:
    QDBusMessage runRaw(test::BusService& caller, const QVariantList& arguments) {
        registerRequestTypes();
        QDBusMessage call =
            QDBusMessage::createMethodCall(requestService, requestObject, requestInterface, "Run");
        call.setArguments(arguments);
        return caller.connection().call(call);
    }

    static QVariantList arguments(const QString& command, const QByteArrayList& paths,
                                  const QVariantMap& options = {}) {
        return {command, QVariant::fromValue(paths), options,
                QVariant::fromValue(QDBusObjectPath("/caller"))};
    }

    static QDBusMessage wanting(bool wanted, const QDBusMessage& call) {
        return call.member() == "Begin" ? call.createReply(wanted) : call.createReply();
    }
};

TEST_F(RawCallerTest, RefusesWhatNoRequestMayBeWithNothingDone) {
    startOwner();
    test::BusService caller(
        {}, [](const QDBusMessage& call) { return wanting(true, call); }, QDBusConnection::SessionBus);
    const QVariantMap wrongKind = {{"x", QVariant::fromValue(QDBusVariant(1))}};
    QByteArrayList tooMany;
    for (qsizetype path = 0; path <= maximumPaths; ++path)
        tooMany.append("/");
    QVariantMap tooManyOptions;
    for (qsizetype option = 0; option <= maximumOptions; ++option)
        tooManyOptions.insert(QString::number(option), true);
    const struct {
        const char* what;
        QVariantList arguments;
    } rows[] = {
        {"relative", arguments("echo", {"/good", "a/b"})},
        {"empty path", arguments("echo", {""})},
        {"NUL", arguments("echo", {QByteArray("/a\0b", 4)})},
        {"too many", arguments("echo", tooMany)},
        {"too long", arguments("echo", {QByteArray(maximumPathBytes + 1, '/')})},
        {"no command", arguments("", {})},
        {"options of a kind unknown", arguments("echo", {}, wrongKind)},
        {"too many options", arguments("echo", {}, tooManyOptions)},
        {"an option too long", arguments("echo", {}, {{"x", QByteArray(maximumTextSize + 1, 'x')}})},
    };
    for (const auto& row : rows) {
        const QDBusMessage reply = runRaw(caller, row.arguments);
        EXPECT_EQ(reply.errorName(), invalidArguments) << row.what;
        EXPECT_FALSE(reply.errorMessage().isEmpty()) << row.what;
    }
    EXPECT_EQ(runRaw(caller, {1, 2}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(run("other"), RequestStatus::WrongUsage);
    EXPECT_EQ(m_owner->readLine(), "begins other");
}

TEST_F(RawCallerTest, BeginsNothingForACallerThatHasGivenUp) {
    startOwner();
    test::BusService caller(
        {}, [](const QDBusMessage& call) { return wanting(false, call); }, QDBusConnection::SessionBus);
    EXPECT_EQ(runRaw(caller, arguments("echo", {})).arguments().value(0), QVariant(1));
    EXPECT_EQ(run("other"), RequestStatus::WrongUsage);
    EXPECT_EQ(m_owner->readLine(), "begins other");
}

TEST_F(RawCallerTest, RefusesAnotherUsersPrograms) {
    if (!test::isRoot())
        GTEST_SKIP() << "only root can be two users";
    startOwner();
    ASSERT_EQ(::seteuid(test::ordinaryUser), 0);
    test::BusService stranger(
        {}, [](const QDBusMessage& call) { return wanting(true, call); }, QDBusConnection::SessionBus);
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(runRaw(stranger, arguments("echo", {})).errorName(), accessDenied);
}

} // namespace
} // namespace veilkeep
