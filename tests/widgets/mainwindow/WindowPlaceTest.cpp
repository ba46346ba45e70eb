#include "widgets/mainwindow/WindowPlace.h"

#include "widgets/controls/Mnemonics.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(WindowPlaceTest, TextComesBackAndRubbishDoesNot) {
    const WindowPlace places[] = {{{10, -20, 1120, 700}, false}, {{0, 0, 640, 400}, true}};
    for (const WindowPlace& place : places)
        EXPECT_EQ(WindowPlace::fromText(place.text()), place);
    for (const char* const text :
         {"", "1 2 3", "1 2 900 600 5", "1 2 900 x", "1 2 0 0", "1 2 -900 600", "99999999999 2 900 600",
          "1 2 900 600 maximized maximized", "-40000 0 900 600", "1  2 900 600"})
        EXPECT_FALSE(WindowPlace::fromText(text)) << text;
    EXPECT_EQ(widthsFromText("235 251", 2), (QList<int>{235, 251}));
    for (const char* const text : {"", "235", "235 0", "235 251 1", "-1 5", "a b"})
        EXPECT_FALSE(widthsFromText(text, 2)) << text;
}

TEST(WindowPlaceTest, TheUpperEdgeMustBeWithinReach) {
    const QList<QRect> screens{{0, 30, 1000, 770}, {1000, 0, 800, 600}};
    const std::pair<QRect, bool> rows[] = {
        {{100, 100, 600, 400}, true},     {{1700, 500, 600, 400}, true}, // a corner on the second
        {{-500, 100, 600, 400}, true},                                   // just enough of it
        {{-501, 100, 600, 400}, false},                                  // not enough
        {{100, 29, 600, 400}, false},                                    // half of a title bar
        {{100, -300, 600, 400}, false},                                  // nothing to drag it by
        {{5000, 5000, 1200, 900}, false},
    };
    for (const auto& [kept, isReached] : rows)
        EXPECT_EQ(canBeReached({kept, false}, screens), isReached) << kept.x() << " " << kept.y();
}

TEST(MnemonicsTest, EachGetsALetterOfItsOwn) {
    QString taken;
    EXPECT_EQ(withMnemonic("Hide", taken), "&Hide");
    EXPECT_EQ(withMnemonic("Hide Group", taken), "Hide &Group");
    EXPECT_EQ(withMnemonic("Hide\tCtrl+H", taken), "H&ide\tCtrl+H");
    EXPECT_EQ(withMnemonic("R&D", taken), "&R&&D");
    EXPECT_EQ(withMnemonic(" (ghi)", taken), " (ghi)"); // none is left
}

} // namespace
} // namespace veilkeep
