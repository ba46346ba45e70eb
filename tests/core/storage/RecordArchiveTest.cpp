#include "core/storage/RecordArchive.h"

#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/CborWriter.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/Repeated.h"
#include "tests/support/ZeroMapping.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>

namespace veilkeep {
namespace {

using namespace std::string_literals;
using test::nestedLists;
using test::repeated;
using Unknown = std::vector<PropertyDictionary::Entry>;

std::string encoded(const std::vector<PropertyDictionary>& records, const Unknown& unknown = {}) {
    std::vector<const PropertyDictionary*> pointers;
    for (const PropertyDictionary& record : records)
        pointers.push_back(&record);
    return encodeArchive("files", pointers, unknown).value();
}

template <class T>
std::optional<Error> errorOf(const Result<T>& result) {
    return result ? std::nullopt : std::optional(result.error());
}

std::string sealed(std::string_view payload, std::uint64_t version = RecordArchive::currentVersion) {
    ArchiveEnvelopeWriter envelope(version, payload.size());
    envelope.text() += payload;
    return std::move(envelope).seal();
}

std::vector<PropertyDictionary> sampleRecords() {
    return {{{"Path", Bytes{"/home/a/\xFF\xFE"}}, {"State", std::int64_t{-1}}, {"IsFile", true}},
            {},
            {{"Size", std::uint64_t{1} << 40}, {"Alias", Null()}, {"Name", "Grüße 🙂"}}};
}

TEST(RecordArchive, KeepsEveryKindOfValue) {
    struct Row {
        const char* name;
        Value written;
        Value read;
    };
    const auto same = [](const char* name, Value value) { return Row{name, value, value}; };
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
    const Row rows[] = {
        same("text", "Grüße 🙂"),
        same("text with NUL", "a\0b"s),
        {"text that is not UTF-8", "\xFF\xFE", Bytes{"\xFF\xFE"}},
        {"lone surrogate", "\xED\xA0\xBD", Bytes{"\xED\xA0\xBD"}},
        same("bytes", Bytes{"\xFF\0\x80"s}),
        same("long bytes", Bytes{std::string(70'000, 'x')}),
        same("least integer", least),
        same("greatest integer", greatest),
        {"small unsigned number", std::uint64_t{5}, std::int64_t{5}},
        same("unsigned number of 64 bits", std::uint64_t{1} << 63),
        same("true", true),
        same("real", 0.1),
        same("null", Null()),
        same("nested", ValueList{PropertyDictionary{{"a", ValueList{}}}, Null(), "b"}),
        same("deepest nesting", nestedLists(maximumValueNesting)),
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Result<RecordArchive> archive = decodeArchive(encoded({{{"key", row.written}}}), "files");
        ASSERT_TRUE(archive);
        ASSERT_EQ(archive->records.size(), 1u);
        const Value* read = archive->records[0].find("key");
        ASSERT_TRUE(read);
        EXPECT_TRUE(*read == row.read);
        EXPECT_EQ(read->content().index(), row.read.content().index());
    }
}

TEST(RecordArchive, KeepsRecordsInOrderAndUnknownKeys) {
    const Unknown unknown = {{"later", PropertyDictionary{{"list", ValueList{std::int64_t{1}}}}},
                             {"\xFFkey", Bytes{"x"}}};
    const std::string bytes = encoded(sampleRecords(), unknown);
    const Result<RecordArchive> archive = decodeArchive(bytes, "files");
    ASSERT_TRUE(archive);
    EXPECT_EQ(archive->version, RecordArchive::currentVersion);
    EXPECT_TRUE(archive->records == sampleRecords());
    ASSERT_EQ(archive->unknown.size(), 2u);
    EXPECT_EQ(encoded(archive->records, archive->unknown), bytes);
}

TEST(RecordArchive, RefusesWhatIsNotOneWholeEnvelope) {
    const auto envelope = [](std::function<void(CborWriter&)> write) {
        std::string text;
        CborWriter writer(text);
        write(writer);
        return text;
    };
    const std::string good = encoded({});
    const struct {
        const char* name;
        std::string bytes;
    } rows[] = {
        {"nothing", ""},
        {"zeros", std::string(65'536, '\0')},
        {"twice", good + good},
        {"one byte more", good + "\xF6"},
        {"version 0", sealed("\xA1\x65"s + "files\x80", 0)},
        {"a million parts", envelope([](CborWriter& writer) { writer.list(1'000'000); })},
        {"open list", "\x9F\x68Veilkeep\x01\x40\x40\xFF"},
        {"other name", "\x84\x68Veilkeeq"s + good.substr(10)},
        {"short digest", envelope([](CborWriter& writer) {
             writer.list(4);
             writer.text("Veilkeep");
             writer.unsignedNumber(1);
             writer.bytes("\xA0");
             writer.bytes("123456789012345");
         })},
    };
    for (const auto& row : rows)
        EXPECT_EQ(errorOf(decodeArchive(row.bytes, "files")), Error::damaged("open archive")) << row.name;
    EXPECT_FALSE(openArchiveEnvelope(test::ZeroMapping(std::size_t{1} << 30).view()));
    const std::string sample = encoded(sampleRecords());
    for (std::size_t at = 0; at < sample.size(); ++at) {
        EXPECT_FALSE(decodeArchive(sample.substr(0, at), "files")) << "cut at " << at;
        std::string bent = sample;
        bent[at] = static_cast<char>(~bent[at]);
        EXPECT_FALSE(decodeArchive(bent, "files")) << "bent at " << at;
    }
}

// Payloads with a digest that is right: what remains is for the structure to be checked.
TEST(RecordArchive, RefusesHostilePayloads) {
    const std::string files = "\xA1\x65"s + "files", twoKeys = "\xA2\x65"s + "files\x80";
    const std::string head(recordHead), record = files + "\x81" + head;
    const std::string million = "\x00\x0F\x42\x40"s, allOnes = repeated("\xFF", 8);
    const struct {
        const char* name;
        std::string payload;
    } rows[] = {
        {"nothing", ""},
        {"a list", "\x80"},
        {"no key", "\xA0"},
        {"the other list's key", "\xA1\x66groups\x80"},
        {"records twice", twoKeys + "\x65" + "files\x80"},
        {"unknown key twice", "\xA3\x65" + "files\x80"s + "\x61x\xF6\x61x\xF6"},
        {"bytes left over", files + "\x80\xF6"},
        {"records no list", files + "\xA0"},
        {"record no map", files + "\x81\x8B" + "aproperties"},
        {"record with another key", files + "\x81\xA2\x6A" + "properties\xA0\x61x\xF6"},
        {"properties no map", record + "\x80"},
        {"key twice", record + "\xA2\x61k\x01\x61k\x02"},
        {"key twice as text and bytes", record + "\xA2\x61k\x01\x41k\x02"},
        {"key twice of many", record + "\xB1" + repeated("\x61k\x01", 17)},
        {"number as key", record + "\xA1\x01\x01"},
        {"key that is not UTF-8", record + "\xA1\x61\xFF\x01"},
        {"text that is not UTF-8", record + "\xA1\x61k\x61\xFF"},
        {"million records in 20 bytes", files + "\x9A" + million + head},
        {"million properties", record + "\xBA" + million + "\x60\xF6"},
        {"million values", record + "\xA1\x61k\x9A" + million},
        {"million pairs", record + "\xA1\x61k\xBA" + million},
        {"million unknown keys", "\xBA" + million + "\x65" + "files\x80"},
        {"2^64-1 records", files + "\x9B" + allOnes},
        {"2^64-1 bytes", record + "\xA1\x61k\x5B" + allOnes},
        {"2^63 bytes of text", record + "\xA1\x61k\x7B\x80" + std::string(7, '\0')},
        {"too deep by one", record + "\xA1\x61k" + repeated("\x81", maximumValueNesting + 1) + "\x01"},
        {"lists 100,000 deep", record + "\xA1\x61k" + repeated("\x81", 100'000) + "\x01"},
        {"maps 100,000 deep", record + "\xA1\x61k" + repeated("\xA1\x61k", 100'000) + "\x01"},
        {"lists that claim all that is left",
         record + "\xA1\x61k" + repeated("\x9A\x00\x0F\x00\x00"s, 60) + std::string(1'000'000, '\xF6')},
        {"more nested values than allowed", record + "\xA1\x61k\x9A\x00\x01\x00\x01"s +
                                                repeated("\xF6", RecordArchive::maximumNestedValues + 1)},
        {"open list", record + "\xA1\x61k\x9F\xFF"},
        {"open map", record + "\xA1\x61k\xBF\xFF"},
        {"open bytes", record + "\xA1\x61k\x5F\x41x\xFF"},
        {"open text", record + "\xA1\x61k\x7F\x61x\xFF"},
        {"open properties", record + "\xBF\xFF"},
        {"tag", record + "\xA1\x61k\xC1\x01"},
        {"undefined", record + "\xA1\x61k\xF7"},
        {"simple value", record + "\xA1\x61k\xE0"},
        {"break", record + "\xA1\x61k\xFF"},
        {"below the least integer", record + "\xA1\x61k\x3B\x80" + std::string(7, '\0')},
        {"cut number", record + "\xA1\x61k\x19\x01"},
    };
    const Error newer{ErrorCode::NewerVersion, "decode archive", {}, 0};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::size_t before = test::allocatedBytes();
        EXPECT_EQ(errorOf(decodeArchive(sealed(row.payload), "files")), Error::damaged("decode archive"));
        EXPECT_LT(test::allocatedBytes() - before, 64 * row.payload.size() + 65'536);
        EXPECT_EQ(errorOf(decodeArchive(sealed(row.payload, 2), "files")), newer);
    }
}

TEST(RecordArchive, DoesNotWriteWhatItWouldNotRead) {
    const PropertyDictionary tooDeep = {{"k", nestedLists(maximumValueNesting + 1)}};
    const PropertyDictionary tooMany = {{"k", ValueList(RecordArchive::maximumNestedValues + 1)}};
    Unknown keys;
    for (std::size_t index = 0; index <= RecordArchive::maximumKeys; ++index)
        keys.push_back({PropertyKey("key " + std::to_string(index)), Null()});
    const PropertyDictionary tooManyKeys = *PropertyDictionary::fromEntries(keys);
    const Error refused{ErrorCode::InvalidArgument, "encode archive", {}, 0};
    for (const PropertyDictionary* record : {&tooDeep, &tooMany, &tooManyKeys})
        EXPECT_EQ(errorOf(encodeArchive("files", {&record, 1})), refused);
    for (const Unknown& unknown : {Unknown{{"files", true}}, Unknown{{"a", true}, {"a", false}}})
        EXPECT_EQ(errorOf(encodeArchive("files", {}, unknown)), refused);
}

} // namespace
} // namespace veilkeep
