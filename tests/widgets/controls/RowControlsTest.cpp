#include "widgets/controls/RowControls.h"

#include <gtest/gtest.h>

#include <QImage>

#include <set>

namespace veilkeep::test {
namespace {

struct Scheme {
    const char* name;
    QColor base, text, highlight;
};

const Scheme schemes[] = {
    {"light", Qt::white, Qt::black, QColor(0x3b, 0x6f, 0xe0)},
    {"grey", QColor(0xef, 0xef, 0xef), QColor(0x20, 0x20, 0x20), QColor(0x30, 0x8c, 0xc6)},
    {"dark", QColor(0x1b, 0x1c, 0x1f), QColor(0xe8, 0xe8, 0xea), QColor(0x5b, 0x8c, 0xff)},
    {"dark, faint text", QColor(0x31, 0x36, 0x3b), QColor(0xc0, 0xc4, 0xc8), QColor(0x2d, 0x5c, 0x76)},
    {"yellow", Qt::white, Qt::black, QColor(0xff, 0xe0, 0x40)},
    {"high contrast", Qt::black, Qt::white, Qt::yellow},
};

QPalette paletteOf(const Scheme& scheme) {
    QPalette palette;
    palette.setColor(QPalette::Base, scheme.base);
    palette.setColor(QPalette::Text, scheme.text);
    palette.setColor(QPalette::Highlight, scheme.highlight);
    return palette;
}

TEST(RowControlsTest, TextsAreReadableOnEveryPalette) {
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    for (const Scheme& scheme : schemes) {
        const QPalette palette = paletteOf(scheme);
        const QColor selection = rowSelectionColor(palette, true);
        for (const bool onSelection : {false, true}) {
            const QColor ground = onSelection ? selection : scheme.base;
            EXPECT_GE(contrastRatio(secondaryTextColor(palette, onSelection), ground), 4.5) << scheme.name;
            EXPECT_GE(contrastRatio(warningColor(palette, onSelection), ground), 4.5) << scheme.name;
        }
        EXPECT_GE(contrastRatio(scheme.text, selection), 4.5) << scheme.name;
        EXPECT_GE(contrastRatio(scheme.text, rowSelectionColor(palette, false)), 4.5) << scheme.name;
        EXPECT_NE(selection, scheme.base) << scheme.name;
        EXPECT_NE(rowSelectionColor(palette, false), selection) << scheme.name;
    }
}

QImage painted(const Scheme& scheme, qreal scale, const QPointF& corner, double position) {
    QImage image(QSize(60, 40) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(scheme.base);
    QPainter painter(&image);
    paintSwitch(painter, QRectF(corner, QSizeF(switchSize)), position, paletteOf(scheme), {});
    return image;
}

// Down through the middle between knob and end: ground, at most the line, filling, and so back.
TEST(RowControlsTest, TheSwitchIsSharpAtEveryScale) {
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0})
        for (const double offset : {0.0, 0.3, 0.5})
            for (const double position : {0.0, 1.0}) {
                const QImage image = painted(schemes[0], scale, {5 + offset, 5 + offset}, position);
                const int x = qRound((5 + offset + (position < 0.5 ? 28 : 12)) * scale);
                std::set<QRgb> colours;
                for (int y = 0; y < image.height(); ++y)
                    colours.insert(image.pixel(x, y));
                EXPECT_LE(colours.size(), 3U) << scale << " " << offset << " " << position;
            }
}

// On or off is told by the place of the knob as well, and both by edges that can be seen.
TEST(RowControlsTest, SwitchStatesDifferByMoreThanColour) {
    for (const Scheme& scheme : schemes) {
        const QImage off = painted(scheme, 2, {5, 5}, 0).convertToFormat(QImage::Format_Grayscale8);
        const QImage on = painted(scheme, 2, {5, 5}, 1).convertToFormat(QImage::Format_Grayscale8);
        const QPoint left(2 * 16, 2 * 16), right(2 * 34, 2 * 16), edge(2 * 25, 2 * 5);
        EXPECT_EQ(off.pixelColor(left), QColor(Qt::white)) << scheme.name;
        EXPECT_EQ(on.pixelColor(right), QColor(Qt::white)) << scheme.name;
        EXPECT_NE(off.pixelColor(right), QColor(Qt::white)) << scheme.name;
        EXPECT_NE(on.pixelColor(left), QColor(Qt::white)) << scheme.name;
        for (const QImage& image : {painted(scheme, 2, {5, 5}, 0), painted(scheme, 2, {5, 5}, 1)})
            EXPECT_GE(contrastRatio(image.pixelColor(edge), scheme.base), 2.9) << scheme.name;
    }
}

} // namespace
} // namespace veilkeep::test
