#include "alerts/OneAlertLock.h"
#include "tests/filelist/StoreWorld.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <filesystem>

namespace veilkeep {
namespace {

using test::fileOf;
using test::StoreWorld;
using Paths = std::vector<std::string>;

const QString oneTitle = "An item could not be added.";
const QString moreTitle = "Some items could not be added.";
TEST(AddingTest, AddsWhatIsThereAndNotListedYet) {
    const struct {
        const char* name;
        Paths dropped; // below the scratch tree, where they are relative
        Paths added;
        std::vector<test::ExpectedAlert> alerts;
    } rows[] = {
        {"nothing", {}, {}, {}},
        {"an empty path", {"/", ""}, {}, {{"The \"/\" item is a protected system file or folder.", "OK"}}},
        {"in their order", {"b", "folder", "a"}, {"b", "folder", "a"}, {}},
        {"twice at once", {"b", "a", "a", "b"}, {"b", "a"}, {}},
        {"twice, spelled with slashes", {"folder/", "folder", "folder//"}, {"folder"}, {}},
        {"a dangling link", {"dangling"}, {"dangling"}, {}},
        {"not UTF-8", {"\xFF%1"}, {"\xFF%1"}, {}},
        {"one listed", {"listed/", "a"}, {"a"}, {{oneTitle, "OK"}}},
        {"listed and hidden now", {"hidden"}, {}, {{oneTitle, "OK"}}},
        {"several listed, hostile names",
         {"a", "listed", "listed%1\n\xFE"},
         {"a"},
         {{moreTitle, "OK",
           "The following items are already in the list of Veilkeep and they cannot be added "
           "again:\nlisted\nlisted%1\\n\\xfe\n"}}},
        {"missing", {"a", "gone", "b"}, {"a", "b"}, {{oneTitle, "OK"}}},
        {"several missing", {"gone", "a/below", "b"}, {"b"}, {{moreTitle, "OK"}}},
        {"protected ones in between",
         {"a", "/usr", "b", "/etc/"},
         {"a", "b"},
         {{"The \"/usr\" item is a protected system file or folder.", "OK"},
          {"The \"/etc\" item is a protected system file or folder.", "OK"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StoreWorld world;
        const auto full = [&](const std::string& path) {
            return path.empty() || path.starts_with('/') ? path : world.tree.path(path);
        };
        for (const char* file : {"a", "b", "hidden", "\xFF%1"})
            world.tree.makeFile(file);
        world.tree.makeDirectory("folder");
        std::filesystem::create_symlink("nowhere", full("dangling"));
        Paths expected, dropped;
        for (const std::string& path : row.dropped)
            dropped.push_back(full(path));
        for (const char* path : {"listed", "hidden", "listed%1\n\xFE"}) {
            expected.push_back(full(path));
            world->list->files().append(fileOf(full(std::string(path) + " elsewhere"), full(path), 2, 1));
        }
        for (const std::string& path : row.added)
            expected.push_back(full(path));
        for (const test::ExpectedAlert& alert : row.alerts)
            world->presenter.expect(alert);
        world.group.chosen = 7;
        world->list->addFiles(dropped);
        world.group.chosen = 8; // the group that they were dropped into counts
        world->list->waitForAdding();
        EXPECT_EQ(world.listed(), expected);
        EXPECT_EQ(world->list->files().countOfGroup(7), row.added.size());
        if (!row.added.empty()) {
            EXPECT_EQ(world.saved(), expected);
        }
    }
}

TEST(AddingTest, AddsAPathOfOverlappingBatchesOnce) {
    StoreWorld world;
    Paths paths;
    for (int number = 0; number < 2000; ++number)
        paths.push_back(world.tree.makeFile("d/" + std::to_string(number)));
    std::size_t added = 0;
    QObject::connect(&world->list->files(), &FileList::filesAppended,
                     [&](std::size_t, std::size_t count) { added += count; });
    for (int batch = 0; batch < 3; ++batch)
        world->list->addFiles(paths);
    EXPECT_TRUE(world->list->isAdding());
    EXPECT_EQ(world->list->files().size(), 0U) << "the caller is not kept waiting";
    world->list->waitForAdding();
    EXPECT_EQ(world.listed(), paths);
    EXPECT_EQ(added, paths.size());
    EXPECT_EQ(world.saved(), paths);
}

TEST(AddingTest, EndsWithTheListWhateverItIsAt) {
    const auto isAdded = [](StoreWorld& world) {
        QCoreApplication::processEvents();
        return world->list->files().size() > 0;
    };
    const auto isAsking = [](StoreWorld&) { // the thread is, and waits for this one
        return OneAlertLock::onlyOneAlertSheetAtATimeLock().isTaken();
    };
    const struct {
        const char* name;
        Paths (*paths)(StoreWorld&);
        bool (*mayEnd)(StoreWorld&);
    } rows[] = {
        {"at the first path", [](StoreWorld& world) { return Paths{world.tree.makeFile("a")}; },
         [](StoreWorld&) { return true; }},
        {"in the midst", [](StoreWorld& world) { return Paths(100'000, world.tree.makeFile("a")); }, isAdded},
        {"in an alert", [](StoreWorld&) { return Paths(1000, "/usr"); }, isAsking},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StoreWorld world;
        world->list->addFiles(row.paths(world));
        world->list->addFiles(row.paths(world));
        ASSERT_TRUE(test::waitUntil([&] { return row.mayEnd(world); }));
        world->list.reset();
        EXPECT_FALSE(world->alerts.isNobodyThere());
    }
}

} // namespace
} // namespace veilkeep
