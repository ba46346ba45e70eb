#include "filelist/BrokenFiles.h"

#include "core/log/Log.h"
#include "filelist/MainThread.h"
#include "tests/support/ListWorld.h"
#include "tests/support/PrivateMount.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace veilkeep::test {
namespace {

// Chooses what the test says.
class Chooser : public PathChooser {
public:
    std::optional<std::string> chooseItem(const std::string& startingAt) override {
        startedAt = startingAt;
        return item;
    }
    std::vector<std::string> chooseDirectoriesToRestore(const std::string& startingAt) override {
        startedAt = startingAt;
        return directories;
    }

    std::string startedAt;
    std::optional<std::string> item;
    std::vector<std::string> directories;
};

class BrokenFilesTest : public ::testing::Test {
protected:
    static void move(const std::string& from, const std::string& to) { std::filesystem::rename(from, to); }

    const ScratchTree m_tree;
    Chooser m_chooser;
};

TEST_F(BrokenFilesTest, KeepsWhatIsOnAnAbsentVolumeAndAsksBeforeItLooks) {
    // "/mnt" is one of the places where volumes come and go.
    const std::string stick = "/mnt/veilkeep-test-" + std::to_string(::getpid());
    ::mkdir(stick.c_str(), 0755);
    std::unique_ptr<ListWorld> world;
    ListedFile file, second;
    {
        const PrivateMount mount("none", stick, "tmpfs");
        if (!mount.whyMissing().empty()) {
            ::rmdir(stick.c_str());
            GTEST_SKIP() << mount.whyMissing();
        }
        world = std::make_unique<ListWorld>();
        writeFile(stick + "/x", "x");
        writeFile(stick + "/y", "y");
        file = world->add(stick + "/x");
        second = world->add(stick + "/y");
    }
    ::rmdir(stick.c_str());
    world->list->performSanityCheck({file, second});
    EXPECT_EQ(file->state(), File::Broken);
    EXPECT_TRUE(world->list->brokenFiles().isOnAbsentVolume(file));

    const ExpectedAlert question = {
        .title = QString("The file \"%1\" is located on a volume (network or a flash drive) and cannot be "
                         "found.")
                     .arg(QString::fromStdString(stick + "/x")),
        .answer = "Ignore",
        .buttons = QStringList{"Locate", "Ignore"},
        .style = Alert::Style::Informational};
    world->presenter.expect(question); // once for the volume
    EXPECT_TRUE(world->list->hideFiles({file, second}, false));
    EXPECT_EQ(world->list->hideOperations().lastBatch().front().reason,
              "The volume that the item lies on is not mounted.");
    EXPECT_EQ(world->list->files().size(), 2U);

    world->list->setNobodyThere(true);
    EXPECT_TRUE(world->list->hideFiles({file}, true)); // asks nobody
    EXPECT_EQ(file->state(), File::Broken);
}

// A search that a batch needs is one for all its items, and none while nobody is there.
TEST_F(BrokenFilesTest, LooksForWhatABatchMisses) {
    ListWorld world;
    FilesViewController::Files files;
    m_tree.makeDirectory("elsewhere/deep");
    for (const char* name : {"a", "b"}) {
        files.push_back(world.add(m_tree.makeFile(std::string("t/") + name)));
        move(m_tree.path(std::string("t/") + name), m_tree.path(std::string("elsewhere/deep/") + name));
    }
    world.turns.leave([&] { EXPECT_TRUE(world.list->hideFiles(files, true)); });
    EXPECT_EQ(files[0]->state(), File::Broken);
    world.progressView.clearLog();
    EXPECT_TRUE(world.list->hideFiles(files, false));
    for (const ListedFile& file : files)
        EXPECT_EQ(file->state(), File::Hidden);
    EXPECT_EQ(files[1]->path(), m_tree.path("elsewhere/deep/.SYS_INDEX/b"));
    EXPECT_EQ(world.progressView.log().filter("begin "),
              (QStringList{"begin Searching for inconsistent files. Please wait...",
                           "begin Hiding of files started. Please wait..."}));
}

TEST_F(BrokenFilesTest, ChecksBehindWithTheOutcomesOfACheck) {
    ListWorld world;
    FilesViewController::Files files;
    for (int number = 0; number < 1100; ++number) // two parts
        files.push_back(world.add(m_tree.makeFile("t/" + std::to_string(number))));
    m_tree.makeDirectory("elsewhere/deep");
    move(m_tree.path("t/0"), m_tree.path("t/other name"));
    move(m_tree.path("t/1050"), m_tree.path("elsewhere/deep/far"));
    for (const int gone : {1, 999, 1000, 1099})
        std::filesystem::remove(m_tree.path("t/" + std::to_string(gone)));
    const ListedFile removed = files[1000];
    bool isChecked = false;
    QObject::connect(world.list.get(), &FilesViewController::checked, [&] { isChecked = true; });
    world.list->checkBehind();
    EXPECT_FALSE(isChecked);
    world.list->removeFileFromList(removed);
    MainThread::runUntil([&] { return isChecked && !world.list->brokenFiles().isSearching(); });
    EXPECT_EQ(files[0]->path(), m_tree.path("t/other name"));
    EXPECT_EQ(files[1050]->path(), m_tree.path("elsewhere/deep/far"));
    EXPECT_EQ(files[1050]->state(), File::Visible);
    EXPECT_EQ(world.list->brokenFiles().brokenFiles(),
              (FilesViewController::Files{files[1], files[999], files[1099]}));
    EXPECT_EQ(removed->state(), File::Visible);
}

// What the user is asked about a broken item in the table, and what comes of each answer.
TEST_F(BrokenFilesTest, AsksWhatToDoWithABrokenItem) {
    struct Row {
        const char* answer;
        std::optional<std::string> chosen; // in the panel
        std::size_t listedAfter;
        std::int32_t stateAfter;
    };
    const std::string other = m_tree.makeFile("t/other"), listed = m_tree.makeFile("t/listed");
    const Row rows[] = {
        {"Cancel", other, 2, File::Broken},
        {"Remove From List", other, 1, File::Visible},
        {"Locate File...", std::nullopt, 2, File::Broken},
        {"Locate File...", other, 2, File::Visible},
        {"Locate File...", listed, 1, File::Visible},
        {"Locate File...", m_tree.path("nothing there"), 2, File::Broken},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.answer + row.chosen.value_or("-"));
        ListWorld world({.pathChooser = &m_chooser});
        world.add(listed);
        const std::string item = m_tree.makeFile("t/broken");
        const ListedFile file = world.add(item);
        ::unlink(item.c_str());
        m_chooser.item = row.chosen;
        world.presenter.expect({.title = "Previously visible file is broken.",
                                .answer = row.answer,
                                .buttons = QStringList{"Locate File...", "Remove From List", "Cancel"},
                                .style = Alert::Style::Critical});
        world.list->performSanityCheck({file});
        world.list->hideOrUnhideFileInTable(item);
        const auto& after = world.list->files().all();
        ASSERT_EQ(after.size(), row.listedAfter);
        EXPECT_EQ(after.back()->state(), row.stateAfter);
        world.list->hideOrUnhideFileInTable("/not listed");
    }
}

TEST_F(BrokenFilesTest, RestoresDirectoriesForAHiddenItemThatIsBroken) {
    ListWorld world({.pathChooser = &m_chooser});
    const ListedFile file = world.list->files().append(
        File::fileWithPath(m_tree.path("t/.SYS_INDEX/gone"), m_tree.path("t/enog"), File::Hidden));
    m_tree.makeFile("one/.SYS_INDEX/a");
    m_tree.makeFile("two/.SYS_INDEX/b");
    m_chooser.directories = {m_tree.path("one"), m_tree.path("two")};
    world.presenter.expect({.title = "Previously hidden file is broken.",
                            .answer = "Restore Directory...",
                            .buttons = QStringList{"Restore Directory...", "Remove From List", "Cancel"}});
    world.list->performSanityCheck({file});
    world.list->hideOrUnhideFileInTable(std::string(file->path()));
    EXPECT_EQ(m_chooser.startedAt, m_tree.path("t"));
    MainThread::runUntil([&] { return !world.list->restores().areRunning(); });
    for (const char* item : {"one/a", "two/b"})
        EXPECT_TRUE(world.list->findFileWithOriginalPath(m_tree.path(item))) << item;
}

TEST_F(BrokenFilesTest, EndsARestoreThatTheUserCancels) {
    const std::string endless = m_tree.makeFile("worker",
                                                "#!/usr/bin/env python3\n"
                                                "import signal\n"
                                                "signal.pthread_sigmask(signal.SIG_SETMASK, [])\n"
                                                "signal.pause()\n",
                                                0755);
    ListWorld world({.worker = endless});
    world.progressView.cancelAt("sub Directory: /d");
    world.list->restoreDir("/d");
    MainThread::runUntil([&] { return !world.list->restores().areRunning(); });
    EXPECT_EQ(world.progressView.log().back(), "end");
}

TEST_F(BrokenFilesTest, EndingAmidARestoreLosesNoRecord) {
    const std::string hidden = m_tree.makeFile("t/.SYS_INDEX/a");
    const std::string folder = OwnPlaces::current().inProgressDirectory;
    {
        ListWorld world;
        std::filesystem::create_directories(folder);
        ASSERT_TRUE(writeRecord(folder, {m_tree.path("t/a"), hidden, 0, 1}));
        world.list->restoreDir(m_tree.makeDirectory("empty"));
    }
    ListWorld next;
    next.list->load();
    next.list->check();
    EXPECT_TRUE(next.list->findFileWithPath(hidden));
}

// An editor saves by replacing: the record stays with its item, or takes the new one where that is gone.
TEST_F(BrokenFilesTest, StaysWithTheItemThatItWasMadeOf) {
    ListWorld world;
    const ListedFile kept = world.add(m_tree.makeFile("t/kept", "old"));
    const ListedFile replaced = world.add(m_tree.makeFile("t/replaced", "old"));
    move(m_tree.path("t/kept"), m_tree.path("t/kept~"));
    m_tree.makeFile("t/kept", "new");
    move(m_tree.makeFile("t/new", "new"), m_tree.path("t/replaced"));
    ASSERT_TRUE(world.list->hideFiles({kept, replaced}, false));
    EXPECT_EQ(readFile(std::string(kept->path())), "old");
    EXPECT_EQ(readFile(m_tree.path("t/kept")), "new");
    EXPECT_EQ(readFile(std::string(replaced->path())), "new");
    EXPECT_NE(readFile(Log::shared().path()).find("Another item has taken the place of"), std::string::npos);
}

TEST_F(BrokenFilesTest, SearchesOnDemandUntilCancelled) {
    ListWorld world;
    const ListedFile file = world.add(m_tree.makeFile("t/a"));
    m_tree.makeDirectory("elsewhere");
    move(m_tree.path("t/a"), m_tree.path("elsewhere/a"));
    world.progressView.cancelAt("sub Searching for missing items...");
    world.list->performSanityCheckOfAll();
    world.progressView.cancelAt("");
    EXPECT_EQ(world.progressView.log().front(), "begin Searching for inconsistent files. Please wait...");
    world.list->performSanityCheckOfAll();
    EXPECT_EQ(file->path(), m_tree.path("elsewhere/a"));
    EXPECT_EQ(world.progressView.log().back(), "end");
}

} // namespace
} // namespace veilkeep::test
