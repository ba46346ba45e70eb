// Writes a picture of every window, in light and dark, at 1x and 2x, for who wants to look at them.

#include "tests/app/EveryWindow.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QPalette>

#include <cstdlib>
#include <set>

namespace veilkeep::test {
namespace {

void setAccent(QPalette& palette) {
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x6f, 0xd6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
}

QPalette lightPalette() {
    QPalette palette(QColor(0xf6, 0xf6, 0xf6));
    palette.setColor(QPalette::Base, Qt::white);
    setAccent(palette);
    return palette;
}

QPalette darkPalette() {
    QPalette palette(QColor(0x3a, 0x3b, 0x40), QColor(0x24, 0x25, 0x29));
    palette.setColor(QPalette::Base, QColor(0x1c, 0x1d, 0x20));
    palette.setColor(QPalette::AlternateBase, QColor(0x27, 0x28, 0x2c));
    palette.setColor(QPalette::ToolTipBase, QColor(0x34, 0x35, 0x3a));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    setAccent(palette);
    palette.setColor(QPalette::Link, QColor(0x8f, 0xb6, 0xff));
    return palette;
}

// How many different colours a screenshot has, as far as they matter.
std::size_t coloursIn(const QImage& image) {
    std::set<QRgb> colours;
    for (int y = 0; y < image.height() && colours.size() < 8; y += 2)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    return colours.size();
}

void writeAll(const QString& folder, bool isDark, const char* scale) {
    ::setenv("QT_SCALE_FACTOR", scale, 1);
    AppWorld world;
    QApplication::setPalette(isDark ? darkPalette() : lightPalette());
    ASSERT_TRUE(world.start());
    world.window()->resize(1120, 700);
    const QDir pictures(QStringLiteral(SCREENSHOTS "/") + folder);
    ASSERT_TRUE(pictures.mkpath("."));
    int count = 0;
    EveryWindow windows(world, [&](const std::string& name, QWidget& window) {
        const QImage image = window.grab().toImage();
        EXPECT_GE(coloursIn(image), 8U) << name << " is blank";
        EXPECT_TRUE(window.isVisible()) << name;
        EXPECT_TRUE(image.save(pictures.filePath(QString::fromStdString(name) + ".png"))) << name;
        ++count;
    });
    windows.lookAtAll();
    EXPECT_GE(count, 40);
}

TEST(ScreenshotsTest, Light) {
    writeAll("light", false, "1");
}

TEST(ScreenshotsTest, Dark) {
    writeAll("dark", true, "1");
}

TEST(ScreenshotsTest, LightTwice) {
    writeAll("light@2x", false, "2");
}

TEST(ScreenshotsTest, DarkTwice) {
    writeAll("dark@2x", true, "2");
}

} // namespace
} // namespace veilkeep::test
