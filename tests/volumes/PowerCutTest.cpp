#include "core/storage/RecordArchive.h"
#include "core/storage/ReplaceFile.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/LoopVolume.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/volumes/FollowedItem.h"

#include <gtest/gtest.h>

#include <sys/mount.h>

#include <exception>
#include <filesystem>
#include <functional>
#include <map>

// The power is cut at any moment of hiding and bringing back: what the disk then holds is the volume's image
// without all that the file system had not written yet.
namespace veilkeep::test {
namespace {

// What the user was told and may rely on.
enum class Told { Nothing, Hidden, Visible };

struct Item {
    std::string visible, hidden;
    std::map<std::string, ItemState> state;
    Told told = Told::Nothing;
};

class PowerCut : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!m_volume.whyMissing().empty())
            GTEST_SKIP() << m_volume.whyMissing();
        makeItem(path("a/quick.txt"), "one");
        makeItem(path("a/told.txt"), "two");
        makeItem(path("b/folder/inner"), "three");
        m_items = {itemAt("a/quick.txt", "a/.SYS_INDEX/kciuq.txt"),
                   itemAt("a/told.txt", "a/.SYS_INDEX/dlot.txt"), itemAt("b/folder", "b/.SYS_INDEX/redlof")};
        m_volume.sync();
    }

    std::string path(const std::string& relative) const { return m_volume.path(relative); }

    Item itemAt(const std::string& visible, const std::string& hidden) const {
        return {path(visible), path(hidden), snapshotOf(path(visible))};
    }

    void saveList(const std::vector<File>& files) {
        std::vector<const PropertyDictionary*> records;
        for (const File& file : files)
            records.push_back(&file.properties());
        const auto bytes = encodeArchive("files", records);
        ASSERT_TRUE(bytes);
        ASSERT_TRUE(replaceFile(path("list"), *bytes));
        m_listIsSaved = true;
    }

    std::vector<File> readList() const {
        auto archive = decodeArchive(readFile(path("list")), "files");
        EXPECT_TRUE(archive);
        std::vector<File> files;
        for (PropertyDictionary& record : archive->records)
            files.emplace_back(std::move(record));
        return files;
    }

    // Tells only what is on the disk.
    void moveAndTell(const std::string& operation, const std::vector<std::size_t>& items) {
        std::vector<std::string> arguments = {bundledProgram("veilkeepctl"), operation};
        for (const std::size_t item : items)
            arguments.push_back(m_items[item].visible);
        const ProgramRun run = runProgram(arguments);
        ASSERT_EQ(run.exitStatus, 0) << run.errors;
        for (const std::size_t item : items)
            m_items[item].told = operation == "hide" ? Told::Hidden : Told::Visible;
    }

    // Looks at the volume as a start after a power cut finds it, at its place and instead of the live one.
    void cutPower(const std::string& when, const std::function<void()>& alsoCheck = {}) {
        const std::string copy = m_tree.path("cut");
        m_volume.copyImage(copy);
        EXPECT_TRUE(runInChild([&] {
            SCOPED_TRACE(when);
            try {
                start(copy, alsoCheck);
            } catch (const std::exception& exception) {
                ADD_FAILURE() << exception.what();
            }
        })) << when;
        std::filesystem::remove(copy);
    }

    void start(const std::string& image, const std::function<void()>& alsoCheck) const {
        ASSERT_EQ(enterPrivateMounts(), "");
        ASSERT_EQ(::umount2(m_volume.mountPoint().c_str(), MNT_DETACH), 0);
        const bool isXfs = std::string_view(GetParam()) == "xfs";
        LoopVolume::mountImage(GetParam(), image, m_volume.mountPoint(), isXfs ? "nouuid" : "");
        MountTable::reread();
        checkItems();
        if (m_listIsSaved)
            checkRecords();
        if (alsoCheck)
            alsoCheck();
        ASSERT_EQ(::umount2(m_volume.mountPoint().c_str(), 0), 0);
    }

    void checkItems() const {
        for (const Item& item : m_items) {
            ASSERT_NE(exists(item.visible), exists(item.hidden)) << item.visible << " is at one place";
            const bool isHidden = exists(item.hidden);
            EXPECT_EQ(snapshotOf(isHidden ? item.hidden : item.visible), item.state) << item.visible;
            EXPECT_TRUE(item.told == Told::Nothing || isHidden == (item.told == Told::Hidden))
                << item.visible << " is not as it was told to be";
        }
    }

    void checkRecords() const {
        const std::vector<File> files = readList();
        ASSERT_EQ(files.size(), m_items.size());
        for (std::size_t index = 0; index < files.size(); ++index) {
            const Item& item = m_items[index];
            expectFound(files[index], exists(item.hidden) ? item.hidden : item.visible, "by its record");
        }
    }

    std::vector<File> records() const {
        std::vector<File> files;
        for (const Item& item : m_items)
            files.push_back(exists(item.hidden) ? File::fileWithPath(item.hidden, item.visible, File::Hidden)
                                                : File::fileWithPath(item.visible));
        return files;
    }

    ScratchTree m_tree;
    LoopVolume m_volume{m_tree, GetParam()};
    std::vector<Item> m_items;
    bool m_listIsSaved = false;
};

TEST_P(PowerCut, LosesNoItemAndUndoesNothingThatWasTold) {
    cutPower("before anything");
    saveList(records());
    cutPower("list saved");
    hide(m_items[0].visible);
    cutPower("hidden, not told", [&] { EXPECT_TRUE(exists(m_items[0].visible)) << "the cut is none"; });
    moveAndTell("hide", {1, 2});
    cutPower("told that two are hidden");
    saveList(records());
    cutPower("list of hidden items saved");
    unhide(m_items[0].hidden);
    cutPower("brought back, not told");
    moveAndTell("unhide", {1});
    cutPower("told that one is back, the last one still hidden");
    hide(m_items[0].visible);
    moveAndTell("unhide", {2});
    cutPower("told that the folder is back and its index gone");
    saveList(records());
    cutPower("list saved at the end");
}

INSTANTIATE_TEST_SUITE_P(Types, PowerCut, testing::Values("ext4", "xfs"),
                         [](const auto& type) { return std::string(type.param); });

} // namespace
} // namespace veilkeep::test
