#include "platform/linux/ColorScheme.h"

#include "tests/support/TurnUntil.h"
#include "tests/support/bus/BusService.h"
#include "tests/support/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

namespace veilkeep {
namespace {

QVariant asVariant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

TEST(ColorSchemeTest, FollowsThePortalThatComesAndWhatItTells) {
    const test::ScratchTree tree;
    const test::PrivateBus bus(tree, test::PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    BusLink link(BusLink::Bus::Session);
    const ColorScheme colors(link);
    link.start();
    EXPECT_FALSE(colors.isDark());

    test::BusService portal(
        "org.freedesktop.portal.Desktop",
        [](const QDBusMessage& call) { return call.createReply(asVariant(asVariant(1U))); },
        QDBusConnection::SessionBus);
    EXPECT_TRUE(test::turnUntil([&] { return colors.isDark(); })) << "asked when it came";

    const auto change = [&](const char* group, const char* key, unsigned int value) {
        QDBusMessage signal = QDBusMessage::createSignal("/org/freedesktop/portal/desktop",
                                                         "org.freedesktop.portal.Settings", "SettingChanged");
        portal.connection().send(signal << group << key << asVariant(value));
    };
    change("org.freedesktop.appearance", "contrast", 0);
    change("org.gnome.desktop.interface", "color-scheme", 0);
    change("org.freedesktop.appearance", "color-scheme", 2);
    EXPECT_TRUE(test::turnUntil([&] { return !colors.isDark(); }));
    change("org.freedesktop.appearance", "color-scheme", 1);
    EXPECT_TRUE(test::turnUntil([&] { return colors.isDark(); }));
}

} // namespace
} // namespace veilkeep
