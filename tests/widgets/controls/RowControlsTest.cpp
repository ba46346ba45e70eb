#include "widgets/controls/RowControls.h"

#include <gtest/gtest.h>

namespace veilkeep::test {
namespace {

struct Scheme {
    const char* name;
    QColor base, text, highlight;
};

const Scheme schemes[] = {
    {"light", Qt::white, Qt::black, QColor(0x3b, 0x6f, 0xe0)},
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

} // namespace
} // namespace veilkeep::test
