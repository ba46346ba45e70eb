#include "core/storage/ArchiveEnvelope.h"
#include "core/storage/RecordArchive.h"
#include "filelist/MainThread.h"
#include "tests/filelist/StoreWorld.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace veilkeep {
namespace {

using namespace std::chrono_literals;
using test::fileOf;
using test::StoreWorld;
using Paths = std::vector<std::string>;

// Seven items in groups 0, 1 and 2; every third is hidden.
void fill(StoreWorld& world) {
    for (int number = 0; number < 7; ++number) {
        const std::string name = std::to_string(number);
        const bool isHidden = number % 3 == 2;
        world->list->files().append(
            fileOf((isHidden ? "/h/" : "/v/") + name, "/v/" + name, number % 3, isHidden));
    }
}

std::string emptyListOfLaterVersion() {
    const std::string own = *encodeArchive("files", {});
    ArchiveEnvelopeWriter writer(RecordArchive::currentVersion + 1, own.size());
    writer.text() += openArchiveEnvelope(own)->payload;
    return std::move(writer).seal();
}

TEST(FilesViewControllerStoreTest, WhatIsNoFileInTheListsPlace) {
    const std::tuple<const char*, std::function<int(const char*)>, bool> rows[] = {
        {"directory", [](const char* path) { return ::mkdir(path, 0700); }, false},
        {"fifo", [](const char* path) { return ::mkfifo(path, 0600); }, false},
        {"link to itself", [](const char* path) { return ::symlink(path, path); }, false},
        {"link to nothing", [](const char* path) { return ::symlink("gone", path); }, true},
    };
    for (const auto& [name, put, canBeSaved] : rows) {
        SCOPED_TRACE(name);
        StoreWorld world;
        fill(world);
        ASSERT_TRUE(world->list->saveDataToDisk());
        const std::size_t listed = world->list->files().size();
        const std::string copy = canBeSaved ? "gone" : "FilesInfo.Veilkeep";
        std::filesystem::rename(world.dataPath(), OwnPlaces::current().dataDirectory + "/" + copy +
                                                      ".earlier-2026-01-31T00-00-00Z");
        ASSERT_EQ(put(world.dataPath().c_str()), 0);
        world.open();
        world->presenter.expect({"The list of items could not be read.", "OK"});
        world->list->loadDataFromDisk();
        ASSERT_EQ(world->presenter.shown().size(), 1U);
        EXPECT_EQ(world->list->files().size(), listed);
        EXPECT_EQ(world->list->saveDataToDisk(), canBeSaved);
    }
}

TEST(FilesViewControllerStoreTest, TellsOnceWhatWasFoundInTheListsPlace) {
    const struct {
        const char* name;
        std::string content;
        bool hasEarlierCopy, canBeSaved;
    } rows[] = {{"damaged", "rubbish", true, true},
                {"damaged, no copy", "", false, true},
                {"of a newer version", emptyListOfLaterVersion(), true, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StoreWorld world;
        fill(world);
        ASSERT_TRUE(world->list->saveDataToDisk());
        world.now += 2h;
        world->list->removeFileFromList(world->list->files().all().front());
        ASSERT_TRUE(world->list->saveDataToDisk());
        if (!row.hasEarlierCopy)
            std::filesystem::remove(world.dataPath() + ".earlier-2026-01-31T02-00-00Z");
        test::writeFile(world.dataPath(), row.content);

        world.open();
        world->presenter.expect(
            {row.canBeSaved ? "The list of items could not be read." : "The list of items can only be read.",
             "OK"});
        world->list->loadDataFromDisk();
        ASSERT_EQ(world->presenter.shown().size(), 1U);
        const std::size_t loaded = row.hasEarlierCopy && row.canBeSaved ? 7 : 0;
        EXPECT_EQ(world->list->files().size(), loaded);
        EXPECT_TRUE(world->list->saveDataToDisk()) << "nothing to save, or it can be saved";
        world->list->files().append(fileOf("/new", "/new"));
        EXPECT_EQ(world->list->saveDataToDisk(), row.canBeSaved);
        EXPECT_EQ(world->list->saveTrouble().has_value(), !row.canBeSaved);
        EXPECT_EQ(test::readFile(world.dataPath()) == row.content, !row.canBeSaved);
        world.open();
        if (!row.canBeSaved)
            continue;
        world->list->loadDataFromDisk(); // and no word more
        EXPECT_EQ(world->list->files().size(), loaded + 1);
    }
}

// What comes meanwhile may save as well.
TEST(FilesViewControllerStoreTest, SavesWhileEventsRun) {
    StoreWorld world;
    fill(world);
    bool isSavedMeanwhile = false;
    MainThread::post(world->list.get(), [&] { isSavedMeanwhile = world->list->saveDataToDisk(); });
    EXPECT_TRUE(world->list->saveWhileEventsRun());
    EXPECT_TRUE(isSavedMeanwhile);
    EXPECT_EQ(world->list->readFilesInfoFileAtPath(world.dataPath())->size(), 7U);
    std::filesystem::remove(world.dataPath());
    std::filesystem::create_directory(world.dataPath());
    EXPECT_FALSE(world->list->saveWhileEventsRun());
    EXPECT_TRUE(world->list->saveTrouble());
}

TEST(FilesViewControllerStoreTest, MergesWhatIsNotListedYet) {
    StoreWorld world;
    fill(world);
    ASSERT_TRUE(world->list->saveDataToDisk());
    Paths expected = world.listed();
    expected.push_back("/x");
    FileList source;
    source.assign({fileOf("/h/x", "/x", 5, 1), fileOf("/v/2", "/v/2", 5), fileOf("/y", "/x", 5)});
    const std::string sourcePath = world.tree.path("source");
    ASSERT_TRUE(world->list->saveFilesArrayToDisk(source.all(), sourcePath));
    for (const auto& [path, brought] : {std::pair(sourcePath, 1U), {world.dataPath(), 0U}}) {
        EXPECT_EQ(world->list->mergeFilesInfoFile(world.dataPath(), path).value_or(99), brought);
        EXPECT_EQ(world.listed(), expected);
        EXPECT_EQ(world.saved(), expected);
        EXPECT_EQ(world->list->files().countOfGroup(5), 0U);
    }
    for (const std::string& name : test::namesIn(OwnPlaces::current().dataDirectory))
        EXPECT_EQ(name.find(".damaged-"), std::string::npos) << name;
}

TEST(FilesViewControllerStoreTest, MergesNothingFromWhatItCannotRead) {
    StoreWorld world;
    fill(world);
    ASSERT_TRUE(world->list->saveDataToDisk());
    const std::string newer = world.tree.makeFile("newer", emptyListOfLaterVersion());
    const std::string damaged = world.tree.makeFile("damaged", "rubbish");
    const std::string good = world.tree.path("good"), missing = world.tree.path("missing");
    ASSERT_TRUE(world->list->saveFilesArrayToDisk({}, good));
    const std::tuple<std::string, std::string, ErrorCode> rows[] = {
        {world.dataPath(), missing, ErrorCode::System},     {missing, good, ErrorCode::System},
        {world.dataPath(), damaged, ErrorCode::Damaged},    {damaged, good, ErrorCode::Damaged},
        {world.dataPath(), newer, ErrorCode::NewerVersion}, {newer, good, ErrorCode::NewerVersion},
    };
    for (const auto& [target, source, code] : rows) {
        const std::string before = test::exists(target) ? test::readFile(target) : "";
        const auto brought = world->list->mergeFilesInfoFile(target, source);
        ASSERT_FALSE(brought) << target << " " << source;
        EXPECT_EQ(brought.error().code, code) << target << " " << source;
        EXPECT_EQ(test::exists(target) ? test::readFile(target) : "", before) << target;
    }
    EXPECT_EQ(world->list->files().size(), 7U);
    EXPECT_FALSE(test::exists(missing));
}

TEST(FilesViewControllerStoreTest, AsksBeforeItRemoves) {
    const test::ExpectedAlert sure = {"Are you sure you want to remove selected items from list?"};
    const test::ExpectedAlert hidden = {"Unhide all files"};
    const struct {
        const char* name;
        std::vector<std::size_t> selected;
        std::int64_t group;
        bool force;
        const test::ExpectedAlert* alert;
        const char* answer;
        bool suppress;
        std::size_t left;
        std::size_t inGroupOne;
    } rows[] = {
        {"nothing selected", {}, 0, true, nullptr, "", false, 7, 2},
        {"cancelled", {0, 1}, 0, false, &sure, "Cancel", false, 7, 2},
        {"removed", {0, 1}, 0, false, &sure, "Remove", false, 5, 1},
        {"only taken out of the group", {1, 4}, 1, false, nullptr, "", false, 7, 0},
        {"from a group by force", {1}, 1, true, &sure, "Remove", true, 6, 1},
        {"hidden, cancelled", {1, 2}, 0, false, &hidden, "Cancel", false, 7, 2},
        {"hidden, removed", {1, 2}, 0, false, &hidden, "Remove", false, 5, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StoreWorld world;
        fill(world);
        FilesViewController::Files selected;
        for (const std::size_t index : row.selected)
            selected.push_back(world->list->files().all()[index]);
        world->list->filesController().setSelectedObjects(selected);
        world.group.chosen = row.group;
        if (row.alert) {
            test::ExpectedAlert answered = *row.alert;
            answered.answer = row.answer;
            answered.suppress = row.suppress;
            world->presenter.expect(answered);
        }
        world->list->removeSelectedRows(row.force);
        EXPECT_EQ(world->list->files().size(), row.left);
        EXPECT_EQ(world->list->files().countOfGroup(1), row.inGroupOne);
        if (row.left < 7) {
            EXPECT_EQ(world.saved(), world.listed());
        }
        EXPECT_EQ(world->defaults.contains("ShowRemoveWarning"), row.suppress);
    }
    StoreWorld world;
    fill(world);
    world->defaults.set("ShowRemoveWarning", false); // its presence counts, not its value
    world->list->removeSingleFile(0, true);
    EXPECT_EQ(world->list->files().size(), 6U);
}

// What listens goes through lists as long as this one each time.
TEST(FilesViewControllerStoreTest, ManyThatAreMovedAreToldOfOnce) {
    StoreWorld world;
    std::vector<File> files;
    for (int number = 0; number < 1001; ++number)
        files.push_back(fileOf("/" + std::to_string(number), "/" + std::to_string(number), 4));
    world->list->files().assign(std::move(files));
    world->list->filterController().setGroup(4);
    FilesController& shown = world->list->filesController();
    FilesViewController::Files moved = shown.arrangedObjects();
    const ListedFile staying = moved[500];
    std::erase(moved, staying);
    shown.setSelectedObjects(moved);
    int changes = 0;
    for (const auto signal : {&FilesController::selectionChanged, &FilesController::arrangedObjectsChanged})
        QObject::connect(&shown, signal, [&] { ++changes; });
    world->list->moveFiles(moved, 0);
    EXPECT_LE(changes, 3);
    EXPECT_EQ(shown.arrangedObjects(), FilesViewController::Files{staying});
}

} // namespace
} // namespace veilkeep
