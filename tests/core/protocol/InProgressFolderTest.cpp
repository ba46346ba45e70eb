#include "core/protocol/InProgressFolder.h"

#include "core/storage/PropertyList.h"
#include "tests/support/HostileNames.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <ctime>

namespace veilkeep {
namespace {

using test::modeOf;

void setTime(const std::string& path, long seconds, long nanoseconds = 0) {
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

TEST(InProgressFolder, KeepsRecordsWithHostileNames) {
    const test::ScratchTree tree;
    const std::string folder = tree.path("new/deep/InProgress");
    std::vector<std::string> names = test::hostileNames();
    names.push_back(std::string(4000, 'x'));
    const InProgressFolder reader(folder);
    int number = 0;
    for (const std::string& name : names) {
        const InProgressRecord record = {"/d/" + name, "/d/.SYS_INDEX/" + name, number++ % 14 - 1,
                                         number % 2};
        ASSERT_TRUE(writeRecord(folder, record)) << name;
        const auto entries = reader.entries().value();
        ASSERT_EQ(entries.size(), 1U) << name;
        const auto dictionary = reader.read(entries[0]);
        ASSERT_TRUE(dictionary) << name;
        const auto read = recordFromDictionary(*dictionary);
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(*read, record) << name;
        EXPECT_TRUE(reader.remove(entries[0]));
    }
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(tree.path("new/deep")), 0700U);
}

TEST(InProgressFolder, ReplacesTheRecordOfTheSameTwoPathsOnly) {
    const test::ScratchTree tree;
    const std::string folder = tree.path("InProgress");
    ASSERT_TRUE(writeRecord(folder, {"/a", "/b", 0, 1}));
    ASSERT_TRUE(writeRecord(folder, {"/a", "/b", 5, 0}));
    const auto entries = InProgressFolder(folder).entries().value();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(*recordFromDictionary(*InProgressFolder(folder).read(entries[0])),
              (InProgressRecord{"/a", "/b", 5, 0}));
    EXPECT_EQ(modeOf(folder + "/" + entries[0]), 0600U);
    for (const auto& [original, current] : {std::pair("/b", "/a"), {"/a/", "b"}, {"/a", "/c"}, {"/c", "/b"}})
        ASSERT_TRUE(writeRecord(folder, {original, current, 0, 1}));
    EXPECT_EQ(InProgressFolder(folder).entries().value().size(), 5U);
    const std::string tooLong = tree.path(std::string(256, 'n'));
    EXPECT_EQ(writeRecord(tooLong, {"/a", "/b", 0, 1}).error().systemError, ENAMETOOLONG);
}

TEST(InProgressFolder, RefusesWhatIsNoRecord) {
    const PropertyDictionary whole = dictionaryFromRecord({"/a", "/b", 3, 1}).value();
    for (const char* key : {"OriginalPath", "CurrentPath", "Error", "Action"}) {
        PropertyDictionary part = whole;
        part.remove(key);
        EXPECT_FALSE(recordFromDictionary(part)) << key;
        part.set(key, ValueList());
        EXPECT_FALSE(recordFromDictionary(part)) << key;
    }
    PropertyDictionary other = whole;
    other.set("Action", std::int64_t{INT_MAX} + 1);
    EXPECT_FALSE(recordFromDictionary(other));
    other = whole;
    other.set("Error", Bytes{"rubbish"});
    EXPECT_EQ(recordFromDictionary(other).value().errorCode, 1);
}

TEST(InProgressFolder, ListsRegularFilesByTime) {
    const test::ScratchTree tree;
    const std::string folder = tree.makeDirectory("InProgress");
    setTime(tree.makeFile("InProgress/b", "2"), 100, 2);
    setTime(tree.makeFile("InProgress/a", "3"), 100, 3);
    setTime(tree.makeFile("InProgress/d", "1"), 99, 9);
    setTime(tree.makeFile("InProgress/c", "4"), 200);
    tree.makeFile("InProgress/.half", "half");
    tree.makeDirectory("InProgress/directory");
    ASSERT_EQ(::mkfifo(tree.path("InProgress/fifo").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("a", tree.path("InProgress/link").c_str()), 0);
    EXPECT_EQ(InProgressFolder(folder).entries().value(), (std::vector<std::string>{"d", "b", "a", "c"}));
}

TEST(InProgressFolder, TakesAwayWhatKilledWritersLeft) {
    const test::ScratchTree tree;
    const std::string folder = tree.makeDirectory("InProgress");
    const long now = std::time(nullptr), day = 24 * 60 * 60;
    const std::string name = ".veilkeep-0123456789abcdef";
    const struct {
        std::string name;
        long age; // seconds
        bool goes;
    } rows[] = {
        {name, day + 60, true},
        {".veilkeep-0000000000000000", day - 60, false},
        {".veilkeep-0000000000000001", -day - 60, false}, // made while the clock was wrong
        {name + "0", 2 * day, false},
        {name + ".plist", 2 * day, false},
        {".veilkeep-0123456789ABCDEF", 2 * day, false},
        {".veilkeep-0123456789abcde", 2 * day, false},
        {"0123456789abcdef.plist", 2 * day, false},
    };
    for (const auto& row : rows)
        setTime(tree.makeFile("InProgress/" + row.name), now - row.age);
    tree.makeDirectory("InProgress/.veilkeep-0000000000000002");
    setTime(tree.path("InProgress/.veilkeep-0000000000000002"), now - 2 * day);

    auto expected = test::namesIn(folder);
    for (const auto& row : rows)
        if (row.goes)
            expected.erase(row.name);
    EXPECT_TRUE(InProgressFolder(folder).removeAbandonedFiles());
    EXPECT_EQ(test::namesIn(folder), expected);
}

TEST(InProgressFolder, ReadsSmallRegularFilesOnly) {
    const test::ScratchTree tree;
    const std::string folder = tree.path("InProgress");
    const std::string good = writePropertyList({{"a", "b"}}).value();
    const std::size_t limit = maximumPropertyListSize;
    tree.makeFile("InProgress/good", good);
    tree.makeFile("InProgress/full", good + std::string(limit - good.size(), '\n'));
    tree.makeFile("InProgress/long", good + std::string(limit + 1 - good.size(), '\n'));
    tree.makeFile("InProgress/empty");
    tree.makeFile("InProgress/rubbish", "rubbish");
    tree.makeFile("InProgress/cut", good.substr(0, good.size() / 2));
    tree.makeDirectory("InProgress/directory");
    ASSERT_EQ(::mkfifo(tree.path("InProgress/fifo").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("good", tree.path("InProgress/link").c_str()), 0);
    const InProgressFolder reader(folder);
    EXPECT_TRUE(reader.read("good"));
    EXPECT_TRUE(reader.read("full"));
    EXPECT_EQ(reader.read("long").error().code, ErrorCode::TooLarge);
    for (const char* name : {"empty", "rubbish", "cut", "directory", "fifo", "link", "missing"})
        EXPECT_FALSE(reader.read(name)) << name;
}

} // namespace
} // namespace veilkeep
