#include "format/PrintableName.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

TEST(PrintableName, LeavesTextAndDisarmsTheRest) {
    const std::pair<std::string, std::string> rows[] = {
        {"report.pdf", "report.pdf"},        {"é 日本 😀", "é 日本 😀"},
        {"a\nb\tc\rd", "a\\nb\\tc\\rd"},     {"\x1b[31mred", "\\x1b[31mred"},
        {"\x7f\x01", "\\x7f\\x01"},          {"\u0085\u009b", "\\u0085\\u009b"},
        {"\u202Egpj.exe", "\\u202egpj.exe"}, {"a\u200Bb\u2028c\uFEFF", "a\\u200bb\\u2028c\\ufeff"},
        {"\U000E0041", "\\ue0041"},          {"\xFF\xC3(", "\\xff\\xc3("},
        {"\xED\xA0\xBD", "\\xed\\xa0\\xbd"}, {"a\\nb", "a\\\\nb"},
        {std::string("a\0b", 3), "a\\x00b"}, {"", ""},
    };
    for (const auto& [name, printable] : rows)
        EXPECT_EQ(printableName(name), printable);
}

} // namespace
} // namespace veilkeep
