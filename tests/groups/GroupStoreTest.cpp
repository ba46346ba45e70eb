#include "core/storage/ArchiveEnvelope.h"
#include "tests/groups/GroupWorld.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

using namespace std::chrono_literals;

class GroupStoreTest : public ::testing::Test {
protected:
    static std::string beside(const std::string& part) { // the path of the first such file, or empty
        for (const std::string& name : namesIn(OwnPlaces::current().dataDirectory))
            if (name.find(part) != std::string::npos)
                return OwnPlaces::current().dataDirectory + "/" + name;
        return {};
    }

    const ScratchTree m_tree;
};

// A file that cannot be taken: what is loaded instead, what is told of it, and what becomes of it.
TEST_F(GroupStoreTest, TellsOnceOfAFileThatCannotBeRead) {
    TimePoint now{std::chrono::sys_days{std::chrono::year{2026} / 1 / 31}};
    GroupsInfoFile file(GroupWorld::dataPath(), {.clock = [&] { return now; }});
    for (const char* name : {"earlier", "last"}) {
        ASSERT_TRUE(
            file.save(std::vector<ListedGroup>{std::make_shared<Group>(Group::groupWithName(name, 0))}));
        now += 2h;
    }
    const std::string copy = beside(".earlier-");
    const std::string good = readFile(GroupWorld::dataPath());
    ArchiveEnvelopeWriter later(2, good.size());
    later.text() += openArchiveEnvelope(good)->payload;
    const std::tuple<std::string, std::string, QString, std::string, bool> rows[] = {
        {"rubbish", "", "The list of groups could not be read.", "earlier", true},
        {std::move(later).seal(), "", "The list of groups can only be read.", "last", false},
        {"rubbish", copy, "The list of groups could not be read.", "All Files", true},
    };
    for (const auto& [bytes, removed, told, firstName, isReplaced] : rows) {
        SCOPED_TRACE(told.toStdString() + firstName);
        std::filesystem::remove(removed);
        writeFile(GroupWorld::dataPath(), bytes);
        GroupWorld world;
        world.list.presenter.expect({.title = told, .answer = "OK"});
        EXPECT_EQ(world.started().names().front(), firstName);
        EXPECT_TRUE(world.groups.saveDataToDisk()) << "nothing is to be saved any more";
        EXPECT_FALSE(world.groups.saveTrouble());
        if (isReplaced) {
            EXPECT_EQ(readFile(beside(".damaged-")), bytes);
            std::filesystem::remove(beside(".damaged-"));
            EXPECT_EQ(GroupWorld().started().names().front(), firstName) << "or it is told again";
        } else {
            world.groups.addGroup();
            EXPECT_EQ(world.groups.saveTrouble()->code, ErrorCode::NewerVersion);
            EXPECT_EQ(readFile(GroupWorld::dataPath()), bytes);
        }
    }
}

// A directory stands where the group file, or the list of items, is to be saved.
TEST_F(GroupStoreTest, KeepsTheMarkOfAFailedSaveUntilOneSucceeds) {
    const std::string listFile = OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep";
    for (const std::string& inTheWay : {GroupWorld::dataPath(), listFile}) {
        SCOPED_TRACE(inTheWay);
        GroupWorld::forgetAll();
        GroupWorld world;
        world.add(m_tree.path("a"), world.started().row(2));
        world.groups.selectRow(2);
        std::filesystem::remove(inTheWay);
        std::filesystem::create_directory(inTheWay);
        world.expectRemoval(world.row(2));
        EXPECT_TRUE(world.groups.removeGroup(world.row(2)));
        world.groups.addGroup();
        EXPECT_TRUE(world.groups.saveTrouble());
        if (inTheWay == listFile) {
            EXPECT_EQ(GroupWorld::savedNames()[2], "Secret Pictures") << "left the disk before its items";
        }
        std::filesystem::remove(inTheWay);
        EXPECT_TRUE(world.groups.saveDataToDisk());
        EXPECT_FALSE(world.groups.saveTrouble());
        EXPECT_EQ(GroupWorld::savedNames(), world.names());
        EXPECT_EQ(world.list.list->readFilesInfoFileAtPath(listFile)->front().groupID(), 0);
    }
}

} // namespace
} // namespace veilkeep::test
