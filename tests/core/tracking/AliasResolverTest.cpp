#include "core/tracking/AliasResolver.h"

#include "core/base/PathText.h"
#include "core/base/UniqueFd.h"
#include "core/tracking/FileAlias.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <thread>

namespace veilkeep {
namespace {

using Outcome = AliasResolver::Answer::Outcome;
using Reach = AliasResolver::Reach;
using Mounting = AliasResolver::Mounting;

class AliasResolverTest : public ::testing::Test {
protected:
    // A volume of its own, so that a walk of it does not walk the whole machine.
    void SetUp() override {
        if (!m_mount.whyMissing().empty())
            GTEST_SKIP() << m_mount.whyMissing();
    }

    std::string path(const std::string& relative) const { return joinPath(m_place, relative); }

    std::string makeFile(const std::string& relative) const {
        std::filesystem::create_directories(parentPath(path(relative)));
        test::writeFile(path(relative), "content of " + relative);
        return path(relative);
    }

    void move(const std::string& from, const std::string& to) const {
        std::filesystem::create_directories(parentPath(path(to)));
        ASSERT_EQ(::rename(path(from).c_str(), path(to).c_str()), 0) << from;
    }

    static std::string aliasOf(const std::string& path) { return aliasRecordFromPath(path).value(); }

    AliasResolver::Answer resolve(const std::string& record, Reach reach = Reach::WholeVolume) const {
        return AliasResolver(reach).resolve(record, Mounting::Never);
    }

    test::ScratchTree m_tree;
    std::string m_place = m_tree.makeDirectory("volume");
    test::PrivateMount m_mount{"volume", m_place, "tmpfs"};
};

// The item of every row is "a/b/c/item.txt" when its record is made.
TEST_F(AliasResolverTest, FindsWhatWasMoved) {
    using Moves = std::vector<std::pair<std::string, std::string>>;
    const struct {
        const char* what;
        Moves moves;
        std::string now;
        bool isNearby;
    } rows[] = {
        {"nothing happened", {}, "a/b/c/item.txt", true},
        {"hidden", {{"a/b/c/item.txt", "a/b/c/.SYS_INDEX/meti.txt"}}, "a/b/c/.SYS_INDEX/meti.txt", true},
        {"its folder hidden", {{"a/b/c", "a/b/.SYS_INDEX/c"}}, "a/b/.SYS_INDEX/c/item.txt", true},
        {"it and a folder far above hidden",
         {{"a/b/c/item.txt", "a/b/c/.SYS_INDEX/meti.txt"}, {"a", ".SYS_INDEX/a"}},
         ".SYS_INDEX/a/b/c/.SYS_INDEX/meti.txt",
         true},
        {"another name in its folder", {{"a/b/c/item.txt", "a/b/c/other"}}, "a/b/c/other", true},
        {"another name while hidden", {{"a/b/c/item.txt", "a/b/c/.SYS_INDEX/x"}}, "a/b/c/.SYS_INDEX/x", true},
        {"another folder", {{"a/b/c/item.txt", "z/item.txt"}}, "z/item.txt", false},
        {"another name for its folder", {{"a/b", "a/y"}}, "a/y/c/item.txt", false},
        {"hidden, then its folder moved",
         {{"a/b/c/item.txt", "a/b/c/.SYS_INDEX/meti.txt"}, {"a/b/c", "z/c"}},
         "z/c/.SYS_INDEX/meti.txt",
         false},
        {"another one put at its place",
         {{"a/b/c/item.txt", "z/item.txt"}, {"a/decoy", "a/b/c/item.txt"}},
         "z/item.txt",
         false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string item = makeFile("a/b/c/item.txt");
        makeFile("a/decoy");
        makeFile("a/b/c/.SYS_INDEX/decoy.txt");
        const std::string record = aliasOf(item);
        for (const auto& [from, to] : row.moves)
            move(from, to);
        EXPECT_EQ(resolve(record), (AliasResolver::Answer{Outcome::Found, path(row.now)}));
        EXPECT_EQ(resolve(record, Reach::Nearby).outcome, row.isNearby ? Outcome::Found : Outcome::Missing);
        for (const auto& entry : std::filesystem::directory_iterator(m_place))
            std::filesystem::remove_all(entry);
    }
}

TEST_F(AliasResolverTest, KeepsTheSpellingOfTheRecord) {
    const std::string item = makeFile("real/item.txt");
    ASSERT_EQ(::symlink("real", path("link").c_str()), 0);
    const std::string record = aliasOf(path("link/item.txt"));
    EXPECT_EQ(resolve(record).path, path("link/item.txt"));
    move("real/item.txt", "real/.SYS_INDEX/meti.txt");
    EXPECT_EQ(resolve(record).path, path("link/.SYS_INDEX/meti.txt"));
}

TEST_F(AliasResolverTest, TellsWhyThereIsNoItem) {
    const std::string item = makeFile("item.txt"), link = path("dangling");
    ASSERT_EQ(::symlink("nowhere", link.c_str()), 0);
    EXPECT_EQ(resolve(aliasOf(link)).outcome, Outcome::Found) << "a link is an item wherever it leads";
    const std::string neverThere = aliasOf(path("never")), record = aliasOf(item);
    AliasRecord doubled = decodeAliasRecord(record).value();
    doubled.lastPath.insert(0, "/");
    ASSERT_EQ(::unlink(item.c_str()), 0);
    makeFile("item.txt");

    EXPECT_EQ(resolve(record), (AliasResolver::Answer{Outcome::Missing, item}))
        << "another one is at its place";
    EXPECT_EQ(resolve(encodeAliasRecord(doubled)).path, item) << "one of two slashes is dropped";
    EXPECT_EQ(resolve(neverThere), (AliasResolver::Answer{Outcome::Missing, path("never")}));
    makeFile("never");
    EXPECT_EQ(resolve(neverThere).outcome, Outcome::Found);
    for (const std::string& bytes : {std::string(), std::string("no record"), record.substr(1)})
        EXPECT_EQ(resolve(bytes).outcome, Outcome::Unusable);

    AliasRecord elsewhere = decodeAliasRecord(record).value();
    elsewhere.volume = {"6f1c-22", "ext4", ""};
    EXPECT_EQ(resolve(encodeAliasRecord(elsewhere)), (AliasResolver::Answer{Outcome::VolumeAbsent, item}));
    AliasResolver resolver(Reach::WholeVolume);
    EXPECT_EQ(pathFromAliasRecord(aliasOf("/"), resolver), "");
    EXPECT_EQ(pathFromAliasRecord("no record", resolver), std::nullopt);
    EXPECT_EQ(pathFromAliasRecord(record, resolver), item) << "the last known path of what is gone";
}

// Mounts what it is told to and remembers what it was asked.
class FakeMounter final : public VolumeMounter {
public:
    // A copy of the mount is kept apart, which no table shows.
    explicit FakeMounter(std::string place)
        : m_place(std::move(place)),
          m_kept(::open_tree(AT_FDCWD, m_place.c_str(), OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC)) {}

    Result<void> mount(const std::string& uuid, Asking asking) override {
        asked.push_back(uuid + (asking == Asking::Allowed ? ", may ask" : ""));
        if (!works)
            return Error::system("mount", m_place, EACCES);
        if (::move_mount(m_kept.get(), "", AT_FDCWD, m_place.c_str(), MOVE_MOUNT_F_EMPTY_PATH) != 0)
            return Error::system("move_mount", m_place, errno);
        return {};
    }

    bool works = false;
    std::vector<std::string> asked;

private:
    std::string m_place;
    UniqueFd m_kept;
};

TEST_F(AliasResolverTest, MountsAnAbsentVolumeOnlyWhenAllowed) {
    const std::string item = makeFile("item.txt");
    const std::string record = aliasOf(item), second = aliasOf(makeFile("second"));
    const std::string uuid = decodeAliasRecord(record)->volume.uuid;
    if (uuid.empty())
        GTEST_SKIP() << "this kernel tells no UUID of a tmpfs";
    FakeMounter mounter(m_place);
    ASSERT_EQ(::umount2(m_place.c_str(), MNT_DETACH), 0);
    MountTable::reread();

    AliasResolver resolver(Reach::WholeVolume, &mounter);
    const std::string_view both[] = {record, second};
    EXPECT_EQ(resolver.resolve(both, Mounting::Never).front().outcome, Outcome::VolumeAbsent);
    EXPECT_TRUE(mounter.asked.empty());
    EXPECT_EQ(resolver.resolve(both, Mounting::Silently).back().outcome, Outcome::VolumeAbsent);
    EXPECT_EQ(mounter.asked, std::vector<std::string>{uuid}) << "once for both";
    mounter.works = true;
    const auto answers = resolver.resolve(both, Mounting::WithQuestions);
    EXPECT_EQ(mounter.asked.back(), uuid + ", may ask");
    EXPECT_EQ(answers.front(), (AliasResolver::Answer{Outcome::Found, item}));
    ::umount2(m_place.c_str(), MNT_DETACH);
}

TEST_F(AliasResolverTest, OneWalkServesManyRecords) {
    constexpr int count = 200;
    std::vector<std::string> records;
    for (int number = 0; number < count; ++number) {
        const std::string name = std::to_string(number);
        records.push_back(aliasOf(makeFile("from/" + name)));
        move("from/" + name, "to/" + name + "/deep/" + name);
    }
    records.push_back("no record");
    const std::vector<std::string_view> views(records.begin(), records.end());
    AliasResolver resolver(Reach::WholeVolume);
    const auto answers = resolver.resolve(views, Mounting::Never);
    for (int number = 0; number < count; ++number) {
        const std::string name = std::to_string(number);
        EXPECT_EQ(answers[static_cast<std::size_t>(number)].path, path("to/" + name + "/deep/" + name));
    }
    EXPECT_EQ(answers.back().outcome, Outcome::Unusable);
    EXPECT_LE(resolver.directoriesSeen(), 2u * count + 4) << "each directory once, and the one they were in";
}

TEST_F(AliasResolverTest, EndsWhenCancelled) {
    for (int number = 0; number < 500; ++number)
        makeFile("d" + std::to_string(number) + "/e/f/g");
    const std::string record = aliasOf(makeFile("gone"));
    ASSERT_EQ(::unlink(path("gone").c_str()), 0);
    AliasResolver resolver(Reach::WholeVolume);
    std::thread other([&] {
        test::waitUntil([&] { return resolver.directoriesSeen() > 10; });
        resolver.cancel();
    });
    auto answer = resolver.resolve(record, Mounting::Never);
    for (int round = 0; round < 10'000 && answer.outcome != Outcome::Cancelled; ++round)
        answer = resolver.resolve(record, Mounting::Never);
    other.join();
    EXPECT_EQ(answer, (AliasResolver::Answer{Outcome::Cancelled, path("gone")}));
    const auto before = resolver.directoriesSeen();
    resolver.resolve(record, Mounting::Never);
    EXPECT_LE(resolver.directoriesSeen(), before + 2) << "what was cancelled walks no more";
}

TEST_F(AliasResolverTest, PassesOverWhatCannotBeReadAndOtherVolumes) {
    const std::string record = aliasOf(makeFile("item"));
    move("item", "there/item");
    std::filesystem::create_directories(path("locked/below"));
    std::filesystem::create_directories(path("other"));
    const test::PrivateMount other("other", path("other"), "tmpfs");
    ASSERT_TRUE(other.whyMissing().empty()) << other.whyMissing();
    for (int number = 0; number < 100; ++number)
        std::filesystem::create_directories(path("other/" + std::to_string(number)));
    ASSERT_EQ(::chmod(path("locked").c_str(), 0), 0);
    ASSERT_EQ(::chmod(m_place.c_str(), 0755), 0);
    EXPECT_TRUE(test::runInChild([&] {
        test::becomeOrdinaryUser();
        AliasResolver resolver(Reach::WholeVolume);
        EXPECT_EQ(resolver.resolve(record, Mounting::Never).path, path("there/item"));
        EXPECT_LT(resolver.directoriesSeen(), 10u);
    }));
}

} // namespace
} // namespace veilkeep
