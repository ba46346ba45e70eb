#include "platform/linux/UdisksVolumeMounter.h"

#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QByteArrayList>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cerrno>
#include <map>
#include <optional>

namespace veilkeep {
namespace {

const QString name = QStringLiteral("org.freedesktop.UDisks2");
const QString mountMethod = QStringLiteral("Mount");
const QString noInteraction = QStringLiteral("auth.no_user_interaction");

// Plays udisks.
class UdisksVolumeMounterTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
        qDBusRegisterMetaType<QByteArrayList>();
        m_udisks.emplace(name, [this](const QDBusMessage& call) { return answer(call); });
    }

    struct Device {
        bool isMounted;
        const char* failure; // the last part of the error's name, null where mounting works
    };

    QDBusMessage answer(const QDBusMessage& call) {
        if (call.member() == QStringLiteral("ResolveDevice")) {
            const auto wanted = qdbus_cast<QVariantMap>(call.arguments().value(0));
            QList<QDBusObjectPath> paths;
            for (const auto& [path, device] : m_devices)
                if (wanted == QVariantMap{{QStringLiteral("uuid"), QStringLiteral("1234-ABCD")}})
                    paths.append(QDBusObjectPath(QString::fromStdString(path)));
            return call.createReply(QVariant::fromValue(paths));
        }
        const Device& device = m_devices.at(call.path().toStdString());
        if (call.member() == mountMethod && device.failure)
            return call.createErrorReply(
                name + QStringLiteral(".Error.") + QString::fromLatin1(device.failure), QStringLiteral("no"));
        if (call.member() == mountMethod)
            return call.createReply(QStringLiteral("/media/u/volume"));
        const QByteArrayList points =
            device.isMounted ? QByteArrayList{QByteArray("/mnt\0", 5)} : QByteArrayList();
        return call.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(points))));
    }

    const test::ScratchTree m_tree;
    const test::PrivateBus m_bus{m_tree};
    std::map<std::string, Device> m_devices;
    std::optional<test::BusService> m_udisks;
    UdisksVolumeMounter m_mounter;
};

TEST_F(UdisksVolumeMounterTest, MountsTheDeviceWithTheUuid) {
    struct Row {
        const char* what;
        std::map<std::string, Device> devices;
        int number; // errno, 0 where all went well
        std::size_t attempts;
    };
    const std::string a = "/org/freedesktop/UDisks2/block_devices/a", b = a + "b";
    const Row rows[] = {
        {"none", {}, ENODEV, 0},
        {"one", {{a, {false, nullptr}}}, 0, 1},
        {"mounted", {{a, {true, "Failed"}}}, 0, 0},
        {"one of two mounted", {{a, {false, nullptr}}, {b, {true, nullptr}}}, 0, 0},
        {"mounted meanwhile", {{a, {false, "AlreadyMounted"}}}, 0, 1},
        {"second works", {{a, {false, "Failed"}}, {b, {false, nullptr}}}, 0, 2},
        {"not allowed", {{a, {false, "NotAuthorized"}}}, EACCES, 1},
        {"dismissed", {{a, {false, "NotAuthorizedDismissed"}}, {b, {false, nullptr}}}, ECANCELED, 1},
        {"damaged", {{a, {false, "Failed"}}}, EIO, 1},
    };
    std::size_t before = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        m_devices = row.devices;
        const Result<void> done = m_mounter.mount("1234-ABCD", Asking::Never);
        EXPECT_EQ(done ? 0 : done.error().systemError, row.number);
        const std::size_t attempts = m_udisks->calls(mountMethod).size();
        EXPECT_EQ(attempts - before, row.attempts);
        before = attempts;
    }
    EXPECT_EQ(m_mounter.mount("", Asking::Never).error().code, ErrorCode::InvalidArgument);
}

TEST_F(UdisksVolumeMounterTest, LetsTheUserBeAskedOnlyWhereAllowed) {
    m_devices = {{"/a", {false, nullptr}}};
    EXPECT_TRUE(m_mounter.mount("1234-ABCD", Asking::Never));
    EXPECT_TRUE(m_mounter.mount("1234-ABCD", Asking::Allowed));
    const auto calls = m_udisks->calls(mountMethod);
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(qdbus_cast<QVariantMap>(calls[0].arguments().value(0)), (QVariantMap{{noInteraction, true}}));
    EXPECT_EQ(qdbus_cast<QVariantMap>(calls[1].arguments().value(0)), QVariantMap());
}

TEST(UdisksVolumeMounterWithoutUdisks, Fails) {
    const test::ScratchTree tree;
    const test::PrivateBus bus(tree);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    EXPECT_EQ(UdisksVolumeMounter().mount("1234-ABCD", Asking::Allowed).error().systemError, ENOTCONN);
}

} // namespace
} // namespace veilkeep
