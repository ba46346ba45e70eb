#include "format/SystemVersion.h"

#include <gtest/gtest.h>

namespace veilkeep {
namespace {

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
