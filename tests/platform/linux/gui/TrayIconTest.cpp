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

// A tray that is late, a program that has its icon in it, and what the user does there.
class TrayIconTest : public ::testing::Test {
protected:
    TrayIconTest() { QApplication::setApplicationDisplayName("Veilkeep"); }

    void SetUp() override {
        startBus();
        if (!m_bus->whyMissing().empty())
            GTEST_SKIP() << m_bus->whyMissing();
        QObject::connect(&icon, &TrayIcon::activated, [this] { ++activations; });
        QObject::connect(menu.addAction("Open R&&D"), &QAction::triggered, [this] { chosen = "open"; });
        QMenu* const groups = menu.addMenu("Groups");
        QObject::connect(groups->addAction("Work"), &QAction::triggered, [this] { chosen = "work"; });
        menu.addSeparator();
        menu.addAction("Quit")->setEnabled(false);
        link.start();
        ASSERT_TRUE(eventually([this] { return link.isUp(); }));
    }

    void startBus() { m_bus = std::make_unique<test::PrivateBus>(m_tree, test::PrivateBus::Place::Session); }
    void stopBus() { m_bus.reset(); }

    bool isShownOnce() {
        return eventually([this] { return icon.isShown() && tray->items().size() == 1; });
    }
    QRgb shownColor() {
        const auto argument = tray->property("IconPixmap").value<QDBusArgument>();
        int width = 0, height = 0;
        QByteArray pixels;
        argument.beginArray();
        argument.beginStructure();
        argument >> width >> height >> pixels;
        return pixels.size() < 4 ? 0 : qRgb(uchar(pixels[1]), uchar(pixels[2]), uchar(pixels[3]));
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
    QString chosen;
};

TEST_F(TrayIconTest, ComesWithALateTrayAndComesBackWithIt) {
    EXPECT_FALSE(icon.isShown());

    tray.emplace();
    ASSERT_TRUE(isShownOnce());
    EXPECT_EQ(tray->registrations(), 1);

    tray->stop();
    EXPECT_TRUE(eventually([this] { return !icon.isShown(); }));
    tray->start();
    ASSERT_TRUE(isShownOnce());
    EXPECT_EQ(tray->labels().size(), 4);

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

TEST_F(TrayIconTest, OffersItsMenuAndIsPressedWhileThatIsOpen) {
    tray.emplace();
    ASSERT_TRUE(isShownOnce());
    EXPECT_EQ(tray->labels(), (QStringList{"Open R&D", "Groups", "-", "Quit"}));
    EXPECT_EQ(tray->toolTip(), "Veilkeep");

    EXPECT_TRUE(tray->choose({"Groups", "Work"}));
    EXPECT_TRUE(eventually([this] { return chosen == "work"; }));
    EXPECT_EQ(shownColor(), QColor(Qt::black).rgb());
    EXPECT_TRUE(tray->choose({"Open R&D"}));
    EXPECT_TRUE(eventually([this] { return chosen == "open"; }));
    EXPECT_FALSE(tray->choose({"Quit"})) << "is disabled";

    tray->openMenu();
    EXPECT_TRUE(eventually([this] { return shownColor() == QColor(Qt::red).rgb(); }));
    tray->closeMenu();
    EXPECT_TRUE(eventually([this] { return shownColor() == QColor(Qt::black).rgb(); }));
    tray->openMenu();
    tray->choose({"Open R&D"}); // of a host that does not tell that its menu is closed
    EXPECT_TRUE(eventually([this] { return shownColor() == QColor(Qt::black).rgb(); }));
}

} // namespace
} // namespace veilkeep
