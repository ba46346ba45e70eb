#include "format/ValueFormatting.h"

#include "core/records/PropertyDictionary.h"
#include "core/tracking/FileIdentity.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>

namespace veilkeep {
namespace {

using test::ScratchTree;

constexpr double beforeSnowLeopard = 949;

class ValueFormatting : public ::testing::Test {
protected:
    ValueFormatting() {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        QLocale::setDefault(QLocale("en_US"));
    }
    ~ValueFormatting() override { QLocale::setDefault(QLocale::c()); }
};

TEST_F(ValueFormatting, SizesInBothSystemsOfUnits) {
    const struct {
        std::int64_t size;
        QString decimal, binary;
    } rows[] = {
        {-1, "N/A", "N/A"},
        {0, "Zero KB", "Zero KB"},
        {3999, "4 KB", "4 KB"},
        {4000, "8 KB", "4 KB"},
        {4095, "8 KB", "4 KB"},
        {4096, "8 KB", "8 KB"},
        {8192, "12 KB", "12 KB"},
        {999'999, "1000 KB", "980 KB"},
        {1'000'000, "1 MB", "980 KB"},
        {1'048'575, "1.04 MB", "1024 KB"},
        {1'048'576, "1.04 MB", "1 MB"},
        {1'896'000, "1.89 MB", "1.8 MB"}, // 1.9 is a little less in single precision
        {999'999'999, "1000 MB", "953.67 MB"},
        {1'073'741'823, "1.07 GB", "1024 MB"},
        {1'200'000'000'000, "1200 GB", "1117.58 GB"},
    };
    for (const auto& [size, decimal, binary] : rows) {
        EXPECT_EQ(stringSizeFromLong(size), decimal) << size;
        EXPECT_EQ(stringSizeFromLong(size, beforeSnowLeopard), binary) << size;
    }
}

TEST_F(ValueFormatting, SizesAndDatesAreWrittenAsTheLocaleHasIt) {
    const struct {
        const char* locale;
        QString size, date;
    } rows[] = {
        {"en_US", "1.5 MB", "3/4/26 10:12 AM"},
        {"de_DE", "1,5 MB", "04.03.26 10:12"},
        {"ar_EG", QStringLiteral("١٫٥ MB"), QStringLiteral("٤‏/٣‏/٢٠٢٦ ١٠:١٢ ص")},
    };
    const FileTime instant{1'772'619'120, 999'999'999};
    for (const auto& [locale, size, date] : rows) {
        QLocale::setDefault(QLocale(locale));
        EXPECT_EQ(stringSizeFromLong(1'500'000), size) << locale;
        EXPECT_EQ(CreationDateValueTransformer::text(ClassicTimestamp::fromFileTime(instant)), date);
        EXPECT_EQ(ModificationDateValueTransformer::text(QDateTime::fromSecsSinceEpoch(instant.seconds)),
                  date);
    }
}

TEST_F(ValueFormatting, FoldersTellHowMuchIsInThem) {
    const ScratchTree scratch;
    const std::string none = scratch.makeDirectory("none");
    const std::string file = scratch.makeFile("one/.hidden");
    scratch.makeFile("home/two/a/below");
    scratch.makeFile("home/two/\xff");
    const std::pair<std::string, QString> rows[] = {
        {none, "N/A"},
        {scratch.path("one"), "N/A"},
        {scratch.path("home/two"), "N/A for 2 items"},
        {"~/two", "N/A for 2 items"},
        {file, "N/A"},
        {scratch.path("missing"), "N/A"},
        {"", "N/A"},
    };
    for (const auto& [path, text] : rows) {
        const PropertyDictionary value{{"Size", std::int64_t{-1}}, {"Path", path}};
        EXPECT_EQ(NumberOfFilesInDirectoryValueTransformer::transformedValue(value), text) << path;
    }
    EXPECT_EQ(NumberOfFilesInDirectoryValueTransformer::transformedValue(std::int64_t{1}), "N/A");
}

TEST_F(ValueFormatting, DatesOfWhatIsThere) {
    const ScratchTree scratch;
    const std::string file = scratch.makeFile("home/file");
    const std::string dangling = scratch.path("link");
    ASSERT_EQ(::symlink("nowhere", dangling.c_str()), 0);
    const timespec times[] = {{0, UTIME_OMIT}, {951'782'400, 5}};
    for (const std::string& path : {file, dangling})
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);

    for (const std::string& path : {file, dangling, std::string("~/file")}) {
        EXPECT_EQ(ModificationDateValueTransformer::transformedValue(path), "2/29/00 12:00 AM");
        EXPECT_NE(CreationDateValueTransformer::transformedValue(path), "2/29/00 12:00 AM");
    }
    for (const std::string& path : {std::string(), scratch.path("missing"), file + "/below"}) {
        EXPECT_EQ(ModificationDateValueTransformer::transformedValue(path), "Unknown") << path;
        EXPECT_EQ(CreationDateValueTransformer::transformedValue(path), "Unknown") << path;
    }
}

TEST_F(ValueFormatting, PlacesBelowTheHomeFolder) {
    const ScratchTree scratch;
    const std::pair<std::string, QString> rows[] = {
        {scratch.home(), "~"},
        {scratch.home() + "/a/b", "~/a/b"},
        {scratch.home() + "work/a", QString::fromStdString(scratch.home() + "work/a")},
        {scratch.home() + "/\xff\n", "~/\\xff\\n"},
        {"/media/stick", "/media/stick"},
        {"", ""},
    };
    for (const auto& [path, shown] : rows)
        EXPECT_EQ(placeWithTilde(path), shown);
}

} // namespace
} // namespace veilkeep
