#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/RecordArchive.h"
#include "tests/groups/GroupWorld.h"
#include "tests/support/FailingCall.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>

#include <algorithm>
#include <filesystem>

namespace veilkeep::test {
namespace {

class GroupStoreTest : public ::testing::Test {
protected:
    static std::vector<std::string> namesBeside(const std::string& part) {
        std::vector<std::string> names;
        std::ranges::copy_if(namesIn(OwnPlaces::current().dataDirectory), std::back_inserter(names),
                             [&](const std::string& name) { return name.find(part) != std::string::npos; });
        return names;
    }

    const ScratchTree m_tree;
};

// A file that cannot be taken: what is loaded instead, what is told of it, and what becomes of it.
TEST_F(GroupStoreTest, TellsOnceOfAFileThatCannotBeRead) {
    using namespace std::chrono_literals;
    std::string good;
    {
        TimePoint now{std::chrono::sys_days{std::chrono::year{2026} / 1 / 31}};
        GroupsInfoFile file(GroupWorld::dataPath(), {.clock = [&] { return now; }});
        const auto group = [](const char* name) {
            return std::make_shared<Group>(Group::groupWithName(name, 1));
        };
        ASSERT_TRUE(file.save(std::vector<ListedGroup>{group("All Files"), group("earlier")}));
        now += 2h;
        ASSERT_TRUE(file.save(std::vector<ListedGroup>{group("All Files"), group("last")}));
        good = readFile(GroupWorld::dataPath());
    }
    const std::string copy = OwnPlaces::current().dataDirectory + "/" + namesBeside(".earlier-").front();
    ArchiveEnvelopeWriter later(2, good.size());
    later.text() += openArchiveEnvelope(good)->payload;
    const std::string newer = std::move(later).seal();
    const std::vector<std::string> defaults = {"All Files", "Custom Groups", "Secret Pictures",
                                               "Private Files"};
    struct Row {
        const char* what;
        std::string bytes;
        bool keepsCopy;
        const char* told;
        std::vector<std::string> names;
        bool isReplaced;
    };
    const Row rows[] = {
        {"damaged", "rubbish", true, "could not be read", {"All Files", "earlier"}, true},
        {"newer", newer, true, "can only be read", {"All Files", "last"}, false},
        {"damaged, no copy", "rubbish", false, "could not be read", defaults, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        if (!row.keepsCopy)
            std::filesystem::remove(copy);
        writeFile(GroupWorld::dataPath(), row.bytes);
        GroupWorld world;
        world.list.presenter.expect(
            {.title = QString("The list of groups %1.").arg(row.told), .answer = "OK"});
        world.started();
        EXPECT_EQ(world.names(), row.names);
        EXPECT_EQ(world.groups.saveTrouble().has_value(), false);
        EXPECT_EQ(readFile(GroupWorld::dataPath()) != row.bytes, row.isReplaced);
        ASSERT_EQ(namesBeside(".damaged-").size(), row.isReplaced);
        for (const std::string& name : namesBeside(".damaged-")) {
            EXPECT_EQ(readFile(OwnPlaces::current().dataDirectory + "/" + name), row.bytes);
            std::filesystem::remove(OwnPlaces::current().dataDirectory + "/" + name);
        }
        if (row.isReplaced) {
            EXPECT_EQ(GroupWorld().started().names(), row.names) << "or it was told again";
        } else {
            EXPECT_TRUE(world.groups.saveDataToDisk()) << "nothing is to be saved";
            world.groups.addGroup();
            EXPECT_EQ(world.groups.saveTrouble()->code, ErrorCode::NewerVersion);
            EXPECT_EQ(readFile(GroupWorld::dataPath()), row.bytes);
        }
    }
}

// Records of strange kinds do no harm and lose nothing.
TEST_F(GroupStoreTest, KeepsWhatItDoesNotKnow) {
    const PropertyDictionary records[] = {
        {{"Name", "All Files"}, {"Predicate", std::int64_t{0}}, {"Icon", Bytes{"odd"}}, {"Later", 1.5}},
        {{"Name", std::int64_t{7}}, {"AutoHide", "text"}},
        {{"Name", Bytes{"\xFF"}}, {"Predicate", Null()}, {"AutoHide", true}},
    };
    std::vector<const PropertyDictionary*> pointers;
    for (const PropertyDictionary& record : records)
        pointers.push_back(&record);
    const std::vector<PropertyDictionary::Entry> unknown = {{"beside", true}};
    std::filesystem::create_directories(OwnPlaces::current().dataDirectory);
    writeFile(GroupWorld::dataPath(), *encodeArchive("groups", pointers, unknown));
    GroupWorld world;
    world.started();
    EXPECT_EQ(world.row(0)->iconData(), "folder-documents_alt") << "not from the file";
    EXPECT_EQ(world.groups.uniqueGroupID(), 1);
    EXPECT_TRUE(world.groups.hideGroup(world.row(2), true)) << "no number, no items";
    world.groups.addGroup();
    const auto archive = decodeArchive(readFile(GroupWorld::dataPath()), "groups");
    ASSERT_TRUE(archive);
    ASSERT_EQ(archive->records.size(), 4U);
    EXPECT_EQ(archive->records[0].find("Later")->asReal(), 1.5);
    EXPECT_EQ(archive->records[1], records[1]);
    EXPECT_EQ(archive->unknown.size(), 1U);
}

TEST_F(GroupStoreTest, KeepsTheMarkOfAFailedSaveUntilOneSucceeds) {
    GroupWorld world;
    world.started();
    const std::string before = readFile(GroupWorld::dataPath());
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_openat, EROFS));
        world.groups.addGroup();
        EXPECT_EQ(world.groups.saveTrouble()->systemError, EROFS);
        EXPECT_EQ(world.names().size(), 5U) << "it is there for as long as the program runs";
    }));
    EXPECT_EQ(readFile(GroupWorld::dataPath()), before);
    std::filesystem::remove(GroupWorld::dataPath());
    std::filesystem::create_directory(GroupWorld::dataPath());
    world.groups.addGroup();
    EXPECT_TRUE(world.groups.saveTrouble());
    EXPECT_FALSE(world.groups.saveDataToDisk());
    std::filesystem::remove(GroupWorld::dataPath());
    EXPECT_TRUE(world.groups.saveDataToDisk());
    EXPECT_FALSE(world.groups.saveTrouble());
    EXPECT_EQ(GroupWorld::savedNames(), world.names());
}

// A group leaves the disk after its items have.
TEST_F(GroupStoreTest, SavesTheItemsBeforeTheGroupThatTheyLeft) {
    const std::string listFile = OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep";
    const auto savedGroup = [&](GroupWorld& world) {
        return world.list.list->readFilesInfoFileAtPath(listFile)->front().groupID();
    };
    GroupWorld world;
    world.started();
    const ListedFile file = world.add(m_tree.path("a"), world.row(2));
    ASSERT_TRUE(world.list.list->saveDataToDisk());
    const std::string before = readFile(listFile);
    world.groups.selectRow(2);

    // Something in the list's place, so that it cannot be saved.
    std::filesystem::remove(listFile);
    std::filesystem::create_directory(listFile);
    world.expectRemoval(world.row(2));
    EXPECT_TRUE(world.groups.removeGroup(world.row(2)));
    EXPECT_EQ(file->groupID(), 0);
    EXPECT_TRUE(world.groups.saveTrouble());
    EXPECT_EQ(GroupWorld::savedNames().size(), 4U);
    world.groups.addGroup();
    EXPECT_EQ(GroupWorld::savedNames().size(), 4U) << "no later save may overtake";

    std::filesystem::remove(listFile);
    EXPECT_TRUE(world.groups.saveDataToDisk());
    EXPECT_EQ(savedGroup(world), 0);
    EXPECT_EQ(GroupWorld::savedNames(), world.names());
    EXPECT_NE(readFile(listFile), before);
}

} // namespace
} // namespace veilkeep::test
