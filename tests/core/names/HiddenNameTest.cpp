#include "core/names/HiddenName.h"

#include "core/base/Utf8.h"
#include "tests/support/Repeated.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <random>

namespace veilkeep {
namespace {

using test::repeated;

const std::string high = "\xED\xA0\xBD", low = "\xED\xB8\x80"; // the halves of the emoji, each alone
const std::string emoji = "\xF0\x9F\x98\x80", accented = "\xC3\xA9";

TEST(HiddenName, ReversesTheBaseAndKeepsTheExtension) {
    const std::pair<std::string, std::string> rows[] = {
        {"report.pdf", "troper.pdf"},
        {"archive.tar.gz", "rat.evihcra.gz"},
        {"", ""},
        {"ab.", ".ba"},
        {".profile", "eliforp."},
        {".config.bak", "kab.gifnoc."},
        {"a..b", "b..a"},
        {"a..tar.gz", "zg.rat..a"},
        {"...", "..."},
        {"a b. c", "b a. c"},
        {"-rf", "fr-"},
        {"line\nbreak.t\nt", "kaerb\nenil.t\nt"},
        {"r" + accented + "sum" + accented + ".pdf", accented + "mus" + accented + "r.pdf"},
        {"a" + emoji + "b", "b" + low + high + "a"},
        {emoji + emoji, low + emoji + high},
        {"x." + emoji, "x." + emoji},
        {low + high, emoji},
        {high + "a", "a" + high},
        {"\xFF\xFE", "\xFE\xFF"},
        {"a\xC3.b", "\xC3"
                    "a.b"},
        {"\xED\xA0", "\xA0\xED"},
    };
    for (const auto& [name, scrambled] : rows)
        EXPECT_EQ(scrambledName(name), scrambled) << testing::PrintToString(name);
}

// The hidden name is the way back: what is not refused returns, and what would not return is refused.
void expectRuleHolds(const std::string& name) {
    const std::string hidden = scrambledName(name);
    const bool isInverted = scrambledName(hidden) == name;
    const NameRefusal refusal = refusalToHide(name);
    ASSERT_TRUE(isInverted || !isWellFormedUtf8(name)) << testing::PrintToString(name);
    const bool fits = name.size() <= longestFileName && hidden.size() <= longestFileName;
    const bool isFileName = name != "." && name != "..";
    ASSERT_EQ(refusal == NameRefusal::None, isInverted && fits && isFileName) << testing::PrintToString(name);
    ASSERT_EQ(refusal == NameRefusal::NotItsOwnInverse, !isInverted && fits) << testing::PrintToString(name);
    ASSERT_TRUE(refusal != NameRefusal::None || visibleName(hidden) == name) << testing::PrintToString(name);
}

TEST(HiddenName, ReturnsOrIsRefusedForEveryNameOfSixUnits) {
    const std::string alphabet[] = {"a", ".", accented, emoji, high, low, "\xC3", "\xA9"};
    std::vector<std::string> names = {""}, longer;
    std::size_t refused = 0, looked = 0;
    for (int units = 1; units <= 6; ++units, names.swap(longer)) {
        longer.clear();
        for (const std::string& name : names)
            for (const std::string& unit : alphabet)
                longer.push_back(name + unit);
        for (const std::string& name : longer) {
            ASSERT_NO_FATAL_FAILURE(expectRuleHolds(name));
            refused += refusalToHide(name) == NameRefusal::NotItsOwnInverse;
        }
        looked += longer.size();
    }
    EXPECT_EQ(looked, 299592u);
    EXPECT_GT(refused, looked / 20);
    EXPECT_LT(refused, looked / 2);
}

TEST(HiddenName, ReturnsOrIsRefusedForRandomLongNames) {
    const unsigned int seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string pieces[] = {"a", "B", " ",  "\n",   "..",   "\xCC\x81", "\xE2\x80\xAE", "\xEF\xBF\xBD",
                                  ".", ".", high, low,    emoji,  accented,   "\xED",         "\xA0",
                                  "x", "-", "é",  "\xF4", "\x8F", "\xBF",     "\xC3",         "\xF0"};
    const int count = test::rounds(50'000, 300'000);
    for (int round = 0; round < count; ++round) {
        const std::size_t kinds = round % 2 ? 24 : 10; // the first ten are well-formed
        const std::size_t length = 1 + random() % 280;
        std::string name;
        while (name.size() < length)
            name += pieces[random() % kinds];
        ASSERT_NO_FATAL_FAILURE(expectRuleHolds(name));
    }
}

TEST(HiddenName, RefusesWhatCannotBeHidden) {
    const struct {
        std::string name;
        std::size_t longest;
        NameRefusal refusal;
    } rows[] = {
        {"report.pdf", 255, NameRefusal::None},
        {"XEDNI_SYS.", 255, NameRefusal::IsHiddenDirectory},
        {".SYS_INDEX", 255, NameRefusal::IsHiddenDirectory},
        {".sys_index", 255, NameRefusal::None},
        {".SYS_INDEX.", 255, NameRefusal::None},
        {"", 255, NameRefusal::NoFileName},
        {".", 255, NameRefusal::NoFileName},
        {"..", 255, NameRefusal::NoFileName},
        {"...", 255, NameRefusal::None},
        {"a/b", 255, NameRefusal::NoFileName},
        {std::string("a\0b", 3), 255, NameRefusal::NoFileName},
        {"\xA9\xC3", 255, NameRefusal::NotItsOwnInverse},
        {high + low, 255, NameRefusal::NotItsOwnInverse},
        {"\xC3\xC3", 255, NameRefusal::None},
        {std::string(255, 'a'), 255, NameRefusal::None},
        {std::string(256, 'a'), 255, NameRefusal::TooLong},
        {std::string(256, 'a'), 1530, NameRefusal::TooLong},
        {std::string(143, 'a'), 143, NameRefusal::None},
        {std::string(144, 'a'), 143, NameRefusal::TooLong},
        // An emoji takes six bytes when it stands alone, four in the middle of a row and in an extension.
        {repeated("a" + emoji, 36) + "bcd", 255, NameRefusal::None},     // 183 bytes, 255 hidden
        {repeated("a" + emoji, 36) + "bcde", 255, NameRefusal::TooLong}, // 256 hidden
        {repeated(emoji, 63) + "a", 255, NameRefusal::None},             // 253 bytes, 255 hidden
        {repeated(emoji, 63) + "abc", 255, NameRefusal::TooLong},        // 255 bytes, 257 hidden
        {"a." + repeated(emoji, 63), 255, NameRefusal::None},
        // Shorter when hidden, but with no way back.
        {"a" + repeated("b" + low + high, 50), 255, NameRefusal::TooLong},
    };
    for (const auto& row : rows)
        EXPECT_EQ(refusalToHide(row.name, row.longest), row.refusal)
            << testing::PrintToString(row.name) << " " << row.longest;
}

TEST(HiddenName, AlwaysHasAVisibleName) {
    const std::string grows = repeated("a" + emoji, 37);
    const std::pair<std::string, std::string> rows[] = {
        {"troper.pdf", "report.pdf"},
        {"XEDNI_SYS.", "XEDNI_SYS."},
        {grows, grows},
        {low + high + "a", "a" + emoji},
        {"..", ".."},
        {"\xA9\xC3", accented},
    };
    for (const auto& [hidden, visible] : rows)
        EXPECT_EQ(visibleName(hidden), visible) << testing::PrintToString(hidden);
}

} // namespace
} // namespace veilkeep
