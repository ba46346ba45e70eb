#include "filelist/FilesInfoFile.h"

#include "core/storage/RecordArchive.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace veilkeep {
namespace {

using namespace std::chrono_literals;
using test::readFile;
using test::ScratchTree;
using test::writeFile;

std::vector<File> sampleFiles(int count) {
    std::vector<File> files;
    for (int number = 0; number < count; ++number)
        files.push_back(File::initWithPath("/sample/item " + std::to_string(number)));
    return files;
}

Result<SafeFile::Saved> save(FilesInfoFile& file, std::vector<File> files) {
    FileList list;
    list.assign(std::move(files));
    return file.save(list.all());
}

// A list of ten, and an earlier copy of nine beside it.
class FilesInfoFileTest : public ::testing::Test {
protected:
    FilesInfoFileTest() {
        FilesInfoFile file = open();
        EXPECT_TRUE(save(file, sampleFiles(9)));
        now += 2h;
        EXPECT_TRUE(save(file, sampleFiles(10)));
        good = readFile(path);
    }

    FilesInfoFile open() const {
        return FilesInfoFile(path, {.clock = [this] { return now; }});
    }

    ScratchTree tree;
    const std::string path = tree.path("d/FilesInfo.Veilkeep");
    TimePoint now{std::chrono::sys_days{std::chrono::year{2026} / 1 / 31}};
    std::string good;
};

TEST_F(FilesInfoFileTest, TakesTheNewestEarlierCopyThatCanBeRead) {
    FilesInfoFile file = open();
    ASSERT_TRUE(file.read());
    now += 2h;
    ASSERT_TRUE(save(file, sampleFiles(1)));
    const std::string copies[] = {path + ".earlier-2026-01-31T04-00-00Z",
                                  path + ".earlier-2026-01-31T02-00-00Z"};
    std::filesystem::remove(path);
    writeFile(path, "damaged");
    EXPECT_EQ(open().load().files->size(), 10U);
    std::filesystem::remove(copies[0]);
    writeFile(copies[0], "damaged");
    EXPECT_EQ(open().load().files->size(), 9U);
    writeFile(copies[1], "damaged");
    const auto nothing = open().load();
    EXPECT_TRUE(nothing.trouble);
    EXPECT_EQ(nothing.earlierCopy, "");
    EXPECT_FALSE(nothing.files);
    std::filesystem::remove(path);
    EXPECT_TRUE(open().load().trouble) << "there was a file";
    for (const std::string& copy : copies)
        std::filesystem::remove(copy);
    EXPECT_FALSE(open().load().trouble) << "there never was a file";
}

TEST_F(FilesInfoFileTest, KeepsWhatItMayNotRead) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all); // root's own
    std::filesystem::permissions(path + ".earlier-2026-01-31T02-00-00Z", std::filesystem::perms::all);
    tree.makeDirectory("d", 0777);
    EXPECT_TRUE(test::runInChild([&] {
        ASSERT_NO_FATAL_FAILURE(test::becomeOrdinaryUser());
        FilesInfoFile file = open();
        const auto loaded = file.load();
        ASSERT_TRUE(loaded.trouble && loaded.files);
        EXPECT_EQ(loaded.trouble->systemError, EACCES);
        EXPECT_EQ(loaded.files->size(), 9U);
        ASSERT_TRUE(save(file, std::move(*loaded.files)));
    }));
    EXPECT_EQ(readFile(path + ".damaged-2026-01-31T02-00-00Z"), good);
    EXPECT_EQ(open().read()->size(), 9U);
}

TEST_F(FilesInfoFileTest, KeepsWhatItDoesNotKnow) {
    const PropertyDictionary records[] = {
        {{"Path", Bytes{"/a\xFF"}}, {"OriginalPath", Bytes{"/a\xFF"}}, {"Alias", Null()}, {"Later", 1.5}},
        {{"Alias", Null()}}, // no path at all
        {{"Path", std::int64_t{5}},
         {"OriginalPath", ValueList{}},
         {"State", "no number"},
         {"GroupID", Null()},
         {"Name", true},
         {"Alias", std::int64_t{-1}}},
        {{"Alias", Bytes{"rubbish"}}, {"State", std::int64_t{1} << 40}, {"Path", "text"}},
    };
    std::vector<const PropertyDictionary*> pointers;
    for (const PropertyDictionary& record : records)
        pointers.push_back(&record);
    const std::vector<PropertyDictionary::Entry> unknown = {{"beside", ValueList{true}}, {"more", "text"}};
    writeFile(path, *encodeArchive("files", pointers, unknown));

    FilesInfoFile file = open();
    auto loaded = file.load();
    ASSERT_FALSE(loaded.trouble);
    loaded.files->push_back(sampleFiles(1).front());
    ASSERT_TRUE(save(file, std::move(*loaded.files)));
    const auto archive = decodeArchive(readFile(path), "files");
    ASSERT_TRUE(archive);
    ASSERT_EQ(archive->records.size(), std::size(records) + 1);
    EXPECT_TRUE(std::ranges::equal(records, std::span(archive->records).first(std::size(records))));
    ASSERT_EQ(archive->unknown.size(), unknown.size());
    for (std::size_t index = 0; index < unknown.size(); ++index)
        EXPECT_EQ(archive->unknown[index].value, unknown[index].value);
}

} // namespace
} // namespace veilkeep
