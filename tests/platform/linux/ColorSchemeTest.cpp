#include "platform/linux/ColorScheme.h"

#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

namespace veilkeep {
namespace {

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

QVariant asVariant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

class ColorSchemeTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.whyMissing().empty())
            GTEST_SKIP() << m_bus.whyMissing();
    }

    void change(const QString& group, const QString& key, unsigned int value) {
        QDBusMessage signal = QDBusMessage::createSignal(
            portalPath, QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal << group << key << asVariant(value);
        m_portal->connection().send(signal);
    }

    test::ScratchTree m_tree;
    test::PrivateBus m_bus{m_tree, test::PrivateBus::Place::Session};
    std::unique_ptr<test::BusService> m_portal;
};

TEST_F(ColorSchemeTest, FollowsThePortalThatComesAndWhatItTells) {
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    const QString scheme = QStringLiteral("color-scheme");
    BusLink link(BusLink::Bus::Session);
    const ColorScheme colors(link);
    link.start();
    EXPECT_FALSE(colors.isDark());

    m_portal = std::make_unique<test::BusService>(
        portalName, [](const QDBusMessage& call) { return call.createReply(asVariant(asVariant(1U))); },
        QDBusConnection::SessionBus);
    EXPECT_TRUE(test::turnUntil([&] { return colors.isDark(); })) << "asked when it came";

    change(appearance, QStringLiteral("contrast"), 0);
    change(QStringLiteral("org.gnome.desktop.interface"), scheme, 0);
    change(appearance, scheme, 2);
    EXPECT_TRUE(test::turnUntil([&] { return !colors.isDark(); }));
    change(appearance, scheme, 1);
    EXPECT_TRUE(test::turnUntil([&] { return colors.isDark(); }));
}

} // namespace
} // namespace veilkeep
