#include "platform/linux/gui/TrayIcon.h"

#include "tests/support/bus/FakeTray.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QPixmap>

#include <optional>

// What Qt's own tray item takes apart for the bus it leaves behind (6.4.2).
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:libQt6DBus";
}

namespace veilkeep {
namespace {

using test::eventually;

QIcon iconOf(Qt::GlobalColor color) {
    QPixmap pixmap(22, 22);
    pixmap.fill(color);
    return pixmap;
}

TEST(TrayIconTest, ComesWithALateTrayAndComesBackWithIt) {
    QApplication::setApplicationDisplayName("Veilkeep");
    const test::ScratchTree tree;
    std::optional<test::PrivateBus> bus(std::in_place, tree, test::PrivateBus::Place::Session);
    if (!bus->whyMissing().empty())
        GTEST_SKIP() << bus->whyMissing();
    BusLink link(BusLink::Bus::Session);
    TrayHost host(link);
    QMenu menu;
    menu.addAction("Open");
    TrayIcon icon(host, menu, iconOf(Qt::black), iconOf(Qt::red));
    int activations = 0;
    QObject::connect(&icon, &TrayIcon::activated, [&] { ++activations; });
    link.start();
    ASSERT_TRUE(eventually([&] { return link.isUp(); }));
    EXPECT_FALSE(icon.isShown());

    std::optional<test::FakeTray> tray(std::in_place);
    const auto isShownOnce = [&] {
        return eventually([&] { return icon.isShown() && tray->items().size() == 1; });
    };
    ASSERT_TRUE(isShownOnce());

    tray->setHost(false);
    EXPECT_TRUE(eventually([&] { return !icon.isShown() && tray->items().isEmpty(); }));
    tray->setHost(true);
    ASSERT_TRUE(isShownOnce());

    bus.reset();
    EXPECT_TRUE(eventually([&] { return !icon.isShown(); }));
    tray.reset();
    bus.emplace(tree, test::PrivateBus::Place::Session);
    tray.emplace();
    ASSERT_TRUE(isShownOnce());
    tray->click();
    EXPECT_TRUE(eventually([&] { return activations == 1; }));
}

} // namespace
} // namespace veilkeep
