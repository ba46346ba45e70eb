#include "core/records/File.h"

#include "core/tracking/FileAlias.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <functional>

namespace veilkeep {
namespace {

class FileLocationTest : public ::testing::Test {
protected:
    struct Expected {
        std::string path, originalPath, name;
        int state;
    };

    void expect(const File& file, const Expected& expected, const std::string& what) const {
        EXPECT_EQ(file.path(), expected.path) << what;
        EXPECT_EQ(file.originalPath(), expected.originalPath) << what;
        EXPECT_EQ(file.name(), expected.name) << what;
        EXPECT_EQ(file.state(), expected.state) << what;
    }

    void move(const std::string& from, const std::string& to) const {
        ASSERT_EQ(::rename(from.c_str(), to.c_str()), 0) << from;
    }

    test::ScratchTree m_tree;
    AliasResolver m_resolver{AliasResolver::Reach::Nearby};
    const std::string m_item = m_tree.makeFile("d/a.txt", "content");
    const std::string m_other = m_tree.path("d/other");
    const std::string m_hidden = (m_tree.makeDirectory("d/.SYS_INDEX"), m_tree.path("d/.SYS_INDEX/a.txt"));
    const std::string m_gone = m_tree.path("d/gone");
};

TEST_F(FileLocationTest, SyncsWithANewPathStepByStep) {
    ASSERT_EQ(::symlink("nowhere", m_other.c_str()), 0);
    const std::string deep = m_tree.makeFile("d/.SYS_INDEX/olof/.SYS_INDEX/txt");
    const std::string odd = m_tree.makeFile("d/my.SYS_INDEXes");
    const struct {
        const char* what;
        std::string path;
        int state;
        std::optional<std::string> newPath;
        Expected expected;
    } rows[] = {
        {"nothing stands for the path", m_item, 0, std::nullopt, {m_item, m_item, "a.txt", 0}},
        {"an existing path wins", m_item, 0, m_other, {m_item, m_item, "a.txt", 0}},
        {"a dangling link exists", m_gone, 0, m_other, {m_other, m_other, "other", 0}},
        {"neither exists", m_gone, 0, m_tree.path("no"), {m_tree.path("no"), m_gone, "gone", -1}},
        {"broken and found", m_gone, -1, m_item, {m_item, m_item, "a.txt", 0}},
        {"broken, and nothing there", m_gone, -1, m_hidden, {m_hidden, m_item, "a.txt", 1}},
        {"every hidden level is named back", m_gone, 0, deep, {deep, m_tree.path("d/folo/txt"), "txt", 1}},
        {"the text anywhere in the path", m_gone, 0, odd, {odd, odd, "my.SYS_INDEXes", 1}},
        {"hidden as it was", deep, 1, std::nullopt, {deep, m_tree.path("d/folo/txt"), "txt", 1}},
    };
    for (const auto& row : rows) {
        File file = File::initWithPath(row.path, row.state);
        file.syncPathWithNewPath(row.newPath);
        expect(file, row.expected, row.what);
        EXPECT_EQ(file.prevState(), row.expected.state == row.state ? 0 : row.state) << row.what;
    }
}

// Below the places where volumes come and go only an explicit wish mounts; elsewhere silence does.
TEST_F(FileLocationTest, MountsByThePlaceAndTheWish) {
    class Recorder final : public VolumeMounter {
    public:
        Result<void> mount(const std::string&, Asking asking) override {
            log += asking == Asking::Allowed ? "asking" : "silently";
            return Error::system("mount", {}, ENODEV);
        }
        std::string log;
    };
    AliasRecord record = decodeAliasRecord(aliasRecordFromPath(m_item).value()).value();
    record.volume = {"6f1c-22", "ext4", ""};
    const struct {
        const char* path;
        const char* without;
        const char* with;
    } rows[] = {
        {"/Volumes/Stick/x", "", "asking"},        {"/media/me/Stick/x", "", "asking"},
        {"/run/media/me/x", "", "asking"},         {"/mnt/x", "", "asking"},
        {"/home/me/x", "silently", "asking"},      {"/srv/Volumes/x", "silently", "asking"},
        {"/srv/media/me/x", "silently", "asking"},
    };
    for (const auto& row : rows) {
        record.lastPath = row.path;
        PropertyDictionary properties = File::initWithPath(row.path).properties();
        properties.set("Alias", Bytes{encodeAliasRecord(record)});
        for (const bool mount : {false, true}) {
            Recorder mounter;
            AliasResolver resolver(AliasResolver::Reach::Nearby, &mounter);
            File file(properties);
            EXPECT_FALSE(file.checkPathesConsistencyWithMount(resolver, mount));
            EXPECT_EQ(mounter.log, mount ? row.with : row.without) << row.path;
            EXPECT_EQ(file.path(), row.path);
        }
    }
}

TEST_F(FileLocationTest, ChecksThatTheItemIsStillTheOne) {
    using Check = File::IdentityCheck;
    const auto replaceItem = [&] {
        m_tree.makeFile("d/new", "saved by an editor");
        move(m_tree.path("d/new"), m_item);
    };
    const struct {
        const char* what;
        std::function<void()> happening;
        Check answer;
        Expected expected;
    } rows[] = {
        {"nothing", [] {}, Check::Confirmed, {m_item, m_item, "a.txt", 0}},
        {"written to",
         [&] { test::writeFile(m_item, "more"); },
         Check::Confirmed,
         {m_item, m_item, "a.txt", 0}},
        {"replaced", replaceItem, Check::Renewed, {m_item, m_item, "a.txt", 0}},
        {"gone", [&] { move(m_item, m_other); }, Check::NothingThere, {m_item, m_item, "a.txt", 0}},
        {"replaced, the old one in its folder",
         replaceItem,
         Check::FollowedElsewhere,
         {m_other, m_other, "other", 0}},
        {"hidden by others, another one at its place",
         [&] {
             move(m_other, m_tree.path("d/.SYS_INDEX/rehto"));
             m_tree.makeFile("d/other");
         },
         Check::FollowedElsewhere,
         {m_tree.path("d/.SYS_INDEX/rehto"), m_other, "other", 1}},
    };
    File file = File::initWithPath(m_item);
    for (const auto& row : rows) {
        row.happening();
        EXPECT_EQ(file.checkIdentity(), row.answer) << row.what;
        expect(file, row.expected, row.what);
        if (row.answer == Check::NothingThere)
            continue;
        EXPECT_EQ(m_resolver.resolve(file.alias().value(), AliasResolver::Mounting::Never).path,
                  row.expected.path)
            << row.what;
        EXPECT_EQ(file.checkIdentity(), Check::Confirmed) << row.what;
    }
    file.updateAlias();
    EXPECT_EQ(file.checkIdentity(), Check::Confirmed);
    PropertyDictionary without = file.properties();
    without.set("Alias", Null());
    File bare(std::move(without));
    EXPECT_EQ(bare.checkIdentity(), Check::Renewed) << "a record without an alias gains one";
    EXPECT_EQ(bare.alias(), file.alias());
}

} // namespace
} // namespace veilkeep
