#include "platform/linux/gui/TrayIcon.h"

#include "tests/support/bus/FakeTray.h"
#include "tests/support/bus/PrivateBus.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QPixmap>

#include <memory>
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

// A tray that is late, a program that has its icon in it.
class TrayIconTest : public ::testing::Test {
protected:
    TrayIconTest() { QApplication::setApplicationDisplayName("Veilkeep"); }

    void SetUp() override {
        startBus();
        if (!m_bus->whyMissing().empty())
            GTEST_SKIP() << m_bus->whyMissing();
        QObject::connect(&icon, &TrayIcon::activated, [this] { ++activations; });
        menu.addAction("Open");
        link.start();
        ASSERT_TRUE(eventually([this] { return link.isUp(); }));
    }

    void startBus() { m_bus = std::make_unique<test::PrivateBus>(m_tree, test::PrivateBus::Place::Session); }
    void stopBus() { m_bus.reset(); }

    bool isShownOnce() {
        return eventually([this] { return icon.isShown() && tray->items().size() == 1; });
    }

private:
    test::ScratchTree m_tree;
    std::unique_ptr<test::PrivateBus> m_bus;

protected:
    BusLink link{BusLink::Bus::Session};
    TrayHost host{link};
    QMenu menu;
    TrayIcon icon{host, menu, iconOf(Qt::black), iconOf(Qt::red)};
    std::optional<test::FakeTray> tray;
    int activations = 0;
};

TEST_F(TrayIconTest, ComesWithALateTrayAndComesBackWithIt) {
    EXPECT_FALSE(icon.isShown());

    tray.emplace();
    ASSERT_TRUE(isShownOnce());

    tray->stop();
    EXPECT_TRUE(eventually([this] { return !icon.isShown(); }));
    tray->start();
    ASSERT_TRUE(isShownOnce());
    EXPECT_EQ(tray->labels(), QStringList("Open"));

    tray->setHost(false);
    EXPECT_TRUE(eventually([this] { return !icon.isShown() && tray->items().isEmpty(); }));
    tray->setHost(true);
    ASSERT_TRUE(isShownOnce());

    stopBus();
    EXPECT_TRUE(eventually([this] { return !icon.isShown(); }));
    tray.reset();
    startBus();
    tray.emplace();
    ASSERT_TRUE(isShownOnce());
    tray->click();
    EXPECT_TRUE(eventually([this] { return activations == 1; }));
}

} // namespace
} // namespace veilkeep
