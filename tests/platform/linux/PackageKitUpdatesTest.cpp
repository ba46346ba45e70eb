#include "platform/linux/PackageKitUpdates.h"

#include "platform/linux/BusLink.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/bus/FakePackageKit.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>

namespace veilkeep {
namespace {

using Kind = UpdateOutcome::Kind;
using Said = test::FakePackageKit::Said;

class PackageKitUpdatesTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
        m_link.start();
        ASSERT_TRUE(test::turnUntil([this] { return m_link.isUp(); }));
    }

    void check() {
        m_updates.check([this](const UpdateOutcome& outcome) { m_told = outcome; });
    }
    bool isTold() {
        return test::turnUntil([this] { return m_told.has_value(); });
    }

    test::ScratchTree m_tree;
    std::optional<test::PrivateBus> m_daemon{std::in_place, m_tree};
    test::PrivateBus& m_bus = *m_daemon;
    BusLink m_link{BusLink::Bus::System};
    PackageKitUpdates m_updates{m_link};
    std::optional<UpdateOutcome> m_told;
};

TEST_F(PackageKitUpdatesTest, TellsWhatTheServiceKnows) {
    const QString ours = QStringLiteral("veilkeep;1.0-1;amd64;installed"),
                  newer = QStringLiteral("veilkeep;1:1.2~rc1-1;amd64;main"),
                  other = QStringLiteral("veilkeep-doc;9;all;main"), offline = QStringLiteral("no network");
    struct Answer {
        Kind kind;
        const char *version = "", *yourVersion = "", *reason = "";
    };
    const struct {
        const char* what;
        Answer answer;
        std::map<QString, Said> said;
    } rows[] = {
        {"none newer",
         {Kind::UpToDate, "", "1.0-1"},
         {{"RefreshCache", {}}, {"Resolve installed", {{ours}}}, {"GetUpdates", {{other}}}}},
        {"a newer one",
         {Kind::Newer, "1:1.2~rc1-1", "1.0-1"},
         {{"RefreshCache", {}}, {"Resolve installed", {{ours}}}, {"GetUpdates", {{other, newer}}}}},
        {"told as later versions do",
         {Kind::Newer, "1:1.2~rc1-1", "1.0-1"},
         {{"RefreshCache", {}},
          {"Resolve installed", {{ours}, {}, true}},
          {"GetUpdates", {{other, newer}, {}, true}}}},
        {"no network, but known already",
         {Kind::Newer, "1:1.2~rc1-1", "1.0-1"},
         {{"RefreshCache", {{}, offline}}, {"Resolve installed", {{ours}}}, {"GetUpdates", {{newer}}}}},
        {"no network",
         {Kind::Failed, "", "1.0-1", "no network"},
         {{"RefreshCache", {{}, offline}}, {"Resolve installed", {{ours}}}, {"GetUpdates", {}}}},
        {"not a package",
         {Kind::NotPackaged},
         {{"RefreshCache", {}}, {"Resolve installed", {}}, {"Resolve", {{}, "not found", false, false, 8}}}},
        {"offered as a package",
         {Kind::NotPackaged, "1:1.2~rc1-1"},
         {{"RefreshCache", {}}, {"Resolve installed", {}}, {"Resolve", {{newer}}}}},
        {"rubbish",
         {Kind::NotPackaged},
         {{"RefreshCache", {}}, {"Resolve installed", {{"veilkeep", ";;", ""}}}, {"Resolve", {}}}},
        {"it fails",
         {Kind::Failed, "", "", "locked"},
         {{"RefreshCache", {}}, {"Resolve installed", {{}, "locked"}}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const test::FakePackageKit service(row.said);
        m_told.reset();
        check();
        ASSERT_TRUE(isTold());
        EXPECT_EQ(m_told->kind, row.answer.kind);
        EXPECT_EQ(m_told->version.toStdString(), row.answer.version);
        EXPECT_EQ(m_told->yourVersion.toStdString(), row.answer.yourVersion);
        EXPECT_EQ(m_told->reason.toStdString(), row.answer.reason);
    }
}

TEST_F(PackageKitUpdatesTest, NoticesThatThereIsNoServiceAndThatItGoes) {
    check();
    ASSERT_TRUE(isTold());
    EXPECT_EQ(m_told->kind, Kind::NoService) << "never started";

    for (const bool goesWithTheBus : {false, true}) {
        std::optional<test::FakePackageKit> service{
            std::in_place, std::map<QString, Said>{{"RefreshCache", {{}, {}, false, true}}}};
        m_told.reset();
        check();
        ASSERT_TRUE(test::turnUntil([&] { return !service->calls("RefreshCache").empty(); }));
        if (goesWithTheBus)
            m_daemon.reset();
        else
            service.reset();
        ASSERT_TRUE(isTold());
        EXPECT_EQ(m_told->kind, goesWithTheBus ? Kind::NoService : Kind::Failed);
    }
    m_told.reset();
    check();
    ASSERT_TRUE(isTold());
    EXPECT_EQ(m_told->kind, Kind::NoService) << "no bus";
}

TEST_F(PackageKitUpdatesTest, TakesNoAnswerOfAServiceThatIsGone) {
    std::optional<test::FakePackageKit> service{
        std::in_place,
        std::map<QString, Said>{{"RefreshCache", {}}, {"Resolve installed", {{}, {}, false, true}}}};
    check();
    ASSERT_TRUE(test::turnUntil([&] { return !service->calls("Resolve").empty(); }));
    service->finish(service->calls("Resolve").front().path());
    service.reset();
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    (void)m_link.connection().call(QDBusMessage::createMethodCall(
        bus, QStringLiteral("/"), bus, QStringLiteral("GetId"))); // both have arrived, and wait
    ASSERT_TRUE(isTold());
    EXPECT_EQ(m_told->kind, Kind::Failed);
    QCoreApplication::processEvents();
}

} // namespace
} // namespace veilkeep
