#include "core/base/PathText.h"
#include "core/names/BaseCloakLogic.h"
#include "filelist/FilesInfoFile.h"
#include "tests/ctl/KillWorld.h"

#include <cstdio>
#include <filesystem>
#include <map>

namespace veilkeep::test {
namespace {

// Kills veilkeepctl in the midst of a batch, right before each of its system calls that concern the list, its
// lock or a hidden directory. The next check finds every item, and tells where it is.
class KillTest : public KillWorld {
protected:
    void SetUp() override {
        KillWorld::SetUp();
        for (int number = 0; number < 20; ++number)
            m_items.push_back(
                m_tree.makeFile("t/item" + std::to_string(number), "content " + std::to_string(number)));
    }

    void killEverywhere() {
        int killed = 0;
        const std::vector<TracedCall> calls = callsOfConcern(withItems("hide"));
        for (const TracedCall& call : calls) {
            SCOPED_TRACE("killed at " + call.line);
            beginAnew();
            killed += isKilledAt(call, withItems("hide"));
            expectToldRightly();
            ASSERT_FALSE(HasFailure());
        }
        std::printf("killed at %d of %zu calls; %d items were hidden by then\n", killed, calls.size(),
                    m_hidden);
        EXPECT_GE(killed, 100);
    }

    Words withItems(const char* command) const {
        Words words = m_items;
        words.insert(words.begin(), command);
        return words;
    }

    // All items visible, and the same items as before.
    void beginAnew() {
        for (const std::string& item : m_items)
            if (const std::string hidden = hiddenPathOf(item); exists(hidden))
                std::filesystem::rename(hidden, item);
        std::filesystem::remove_all(m_tree.path("t/.SYS_INDEX"));
        std::filesystem::remove_all(m_data);
        if (m_list.empty())
            return;
        std::filesystem::create_directories(m_data);
        writeFile(m_dataFile, m_list);
    }

    void expectToldRightly() {
        const ProgramRun check = ctl({"check"});
        EXPECT_EQ(check.errors, "");
        EXPECT_EQ(check.exitStatus, 0);
        std::map<std::string, File> records;
        for (File& record : FilesInfoFile(m_dataFile).read().value_or({}))
            EXPECT_TRUE(records.emplace(record.originalPath(), record).second) << "twice";
        for (std::size_t number = 0; number < m_items.size(); ++number) {
            const std::string& item = m_items[number];
            const std::string hidden = hiddenPathOf(item);
            const bool isHidden = exists(hidden);
            m_hidden += isHidden;
            EXPECT_NE(isHidden, exists(item)) << item;
            EXPECT_EQ(readFile(isHidden ? hidden : item), "content " + std::to_string(number));
            const auto record = records.find(item);
            if (record == records.end()) {
                EXPECT_TRUE(m_list.empty() && !isHidden) << "not listed: " << item;
                continue;
            }
            EXPECT_EQ(record->second.path(), isHidden ? hidden : item);
            EXPECT_EQ(record->second.state(), isHidden ? File::Hidden : File::Visible) << item;
        }
    }

    static std::string hiddenPathOf(const std::string& item) {
        return BaseCloakLogic::constructHidenFullFileName(item,
                                                          joinPath(parentPath(item), hiddenDirectoryName));
    }

    const std::string m_dataFile = m_data + "/FilesInfo.Veilkeep";
    std::string m_list; // the list file to begin with; empty for none
    int m_hidden = 0;
};

TEST_F(KillTest, WhereAllItemsAreListed) {
    ASSERT_EQ(ctl(withItems("add")).exitStatus, 0);
    m_list = readFile(m_dataFile);
    killEverywhere();
}

// A hide lists them, before it moves the first one.
TEST_F(KillTest, WhereNoItemIsListed) {
    killEverywhere();
}

} // namespace
} // namespace veilkeep::test
