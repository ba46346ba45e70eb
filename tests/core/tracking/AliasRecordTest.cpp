#include "core/tracking/AliasRecord.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace veilkeep {
namespace {

constexpr std::size_t digestSize = 8;
constexpr std::size_t versionOffset = 8;

AliasRecord typicalRecord() {
    AliasRecord record;
    record.lastPath = "/home/" + std::string(69, 'p') + "/.txt";
    record.volume = {"0b3eeb2c-8f0b-4b59-9e0e-2f6a3f0c1d2e", "ext4", ""};
    record.volumePath = "/" + std::string(69, 'p') + "/.txt";
    record.item.kind = ItemKind::File;
    record.item.inode = 12'345'678;
    record.item.size = 123'456;
    record.item.modificationTime = {1'700'000'000, 999'999'999};
    record.item.birthTime = FileTime{1'600'000'000, 123'456'789};
    record.item.handle = FileHandle{1, std::string("\x4e\x61\xbc\0\x01\x02\x03\x04", 8)};
    return record;
}

std::vector<AliasRecord> records() {
    std::vector<AliasRecord> all(4, typicalRecord());
    all[1] = AliasRecord();
    all[1].lastPath = "/gone";
    AliasRecord& extreme = all[2];
    extreme.lastPath = "//" + std::string(4'000, '\xff') + "\n";
    extreme.volume = {"", "fuse.sshfs", "me@host:/"};
    extreme.volumePath = std::string(5'000, 'x');
    extreme.item.inode = extreme.item.size = std::numeric_limits<std::uint64_t>::max();
    extreme.item.modificationTime = {std::numeric_limits<std::int64_t>::min(), 0};
    extreme.item.birthTime = FileTime{std::numeric_limits<std::int64_t>::max(), 1};
    extreme.item.handle = FileHandle{std::numeric_limits<std::int32_t>::min(), std::string(128, '\0')};
    all[3].item.kind = ItemKind::BlockDevice;
    all[3].item.birthTime.reset();
    all[3].volumePath = all[3].lastPath;
    return all;
}

// Makes the digest right again, so that what lies behind it is put to the test.
std::string sealed(std::string bytes) {
    const std::size_t covered = bytes.size() - digestSize;
    const std::uint64_t digest = XXH3_64bits(bytes.data(), covered);
    for (std::size_t i = 0; i < digestSize; ++i)
        bytes[covered + i] = static_cast<char>(digest >> (8 * i) & 0xff);
    return bytes;
}

TEST(AliasRecord, ComesBackAsItWas) {
    for (const AliasRecord& record : records()) {
        const std::string bytes = encodeAliasRecord(record);
        EXPECT_EQ(decodeAliasRecord(bytes), record) << record.lastPath.substr(0, 20);
        EXPECT_EQ(decodeAliasRecord(bytes + bytes), record) << "bytes after its own count";
        EXPECT_EQ(sealed(bytes), bytes);
        std::uint32_t count = 0;
        std::memcpy(&count, bytes.data() + 4, sizeof count);
        EXPECT_EQ(count, bytes.size());
    }
}

TEST(AliasRecord, RefusesWhatIsNoWholeRecordOfThisVersion) {
    const std::string good = encodeAliasRecord(typicalRecord());
    std::string future = good;
    future[versionOffset] = 2;
    std::string tooLarge = good;
    tooLarge.replace(4, 4, "\xff\xff\xff\xff");
    std::string longText = encodeAliasRecord(records()[1]); // ends in the 5 bytes of a path
    const std::size_t textSize = longText.size() - digestSize - 6;
    ASSERT_EQ(longText[textSize], 5);
    std::string shortText = longText;
    longText[textSize] = 6;
    shortText[textSize] = 4;
    const std::pair<const char*, std::string> rows[] = {
        {"nothing", ""},
        {"later version", sealed(future)},
        {"count beyond the bytes", tooLarge},
        {"count of less than a header", "VkAl\x08" + std::string(64, '\0')},
        {"other magic", "alis" + good.substr(4)},
        {"no path", encodeAliasRecord(AliasRecord())},
        {"text beyond the content", sealed(longText)},
        {"content beyond the text", sealed(shortText)},
    };
    for (const auto& [what, bytes] : rows)
        EXPECT_FALSE(decodeAliasRecord(bytes)) << what;
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(decodeAliasRecord(std::string_view(good).substr(0, length))) << length;
}

TEST(AliasRecord, NoticesEveryFlippedByte) {
    for (const AliasRecord& record : records()) {
        std::string bytes = encodeAliasRecord(record);
        for (char& byte : bytes)
            for (const char mask : {'\x01', '\x10', '\x80', '\xff'}) {
                byte = static_cast<char>(byte ^ mask);
                EXPECT_FALSE(decodeAliasRecord(bytes)) << &byte - bytes.data();
                byte = static_cast<char>(byte ^ mask);
            }
    }
}

} // namespace
} // namespace veilkeep
