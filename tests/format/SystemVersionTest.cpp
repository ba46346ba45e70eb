#include "format/SystemVersion.h"

#include <gtest/gtest.h>

#include <array>

namespace veilkeep {
namespace {

TEST(SystemVersion, TestsCompareTheWholePart) {
    const struct {
        double version;
        std::array<bool, 4> answers; // Tiger or better, Tiger, Leopard or better, Snow Leopard or better
    } rows[] = {
        {743.36, {false, false, false, false}},    {744, {true, false, false, false}},
        {824.48, {true, true, false, false}},      {825, {true, false, true, false}},
        {949.54, {true, false, true, false}},      {950, {true, false, true, true}},
        {newestSystem, {true, false, true, true}},
    };
    for (const auto& [version, answers] : rows) {
        const std::array<bool, 4> is = {isOnTigerOrBetter(version), isTiger(version),
                                        isOnLeopardOrBetter(version), isSnowLeopardOrBetter(version)};
        EXPECT_EQ(is, answers) << version;
    }
}

TEST(SystemVersion, TextIsCutToTheNumber) {
    const std::pair<QString, QString> rows[] = {
        {"Version 10.6.8 (Build 10K549)", "10.6.8"},
        {"12 (bookworm)", "12"},
        {"6.18.0-1-amd64", "6.18.0-1-amd64"},
        {"version 3", "version"},
        {"", ""},
    };
    for (const auto& [text, version] : rows)
        EXPECT_EQ(shortVersion(text), version);
}

TEST(SystemVersion, OsReleaseFilesOfAllSorts) {
    const std::pair<std::string, QString> rows[] = {
        {"NAME=\"Debian\"\nVERSION_ID=\"12\"\nVERSION=\"12 (bookworm)\"\n", "12 (bookworm)"},
        {"VERSION_ID=39", "39"},
        {"VERSION=''\nVERSION_ID='24.04'\n", "24.04"},
        {"VERSION_CODENAME=sid\n", {}},
        {"", {}},
    };
    for (const auto& [content, version] : rows)
        EXPECT_EQ(versionInOsRelease(content), version) << content;
}

} // namespace
} // namespace veilkeep
