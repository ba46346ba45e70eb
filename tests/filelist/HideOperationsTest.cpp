#include "filelist/HideOperations.h"

#include "alerts/OneAlertLock.h"
#include "core/log/Log.h"
#include "core/protocol/InProgressRecord.h"
#include "tests/support/FailingCall.h"
#include "tests/support/ListWorld.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <tuple>

namespace veilkeep::test {
namespace {

// A bus without other programs.
class Notifications : public DistributedNotifications {
public:
    Result<void> post(const QString& name, const QString& object) override {
        emit posted(name, object);
        return {};
    }
};

class HideOperationsTest : public ::testing::Test {
protected:
    // A script in the worker's place.
    ListWorldOptions workerThat(const std::string& script) {
        return {.worker = m_tree.makeFile("worker", "#!/bin/sh\n" + script + "\n", 0755)};
    }
    std::string log() const { return readFile(Log::shared().path()); }

    const ScratchTree m_tree;
};

// What each answer of the worker does to the record, and how it is told.
TEST_F(HideOperationsTest, TellsFailures) {
    const std::tuple<bool, int, QString, int> rows[] = {
        // hides, the worker's answer, what is collected, the state after it
        {true, 1, "Unknown error", File::Broken},
        {true, 3, "Not enough rights", File::Visible},
        {true, 7, "User cancelled operation.", File::Broken},
        {true, 99, "Unknown error (99)", File::Broken},
        {false, 3, "Not enough permitions.", File::Hidden},
        {false, 6, "Item with the same name already exists.", File::Hidden},
        {false, 7, {}, File::Hidden},
    };
    m_tree.makeFile("t/a");
    m_tree.makeFile("t/.SYS_INDEX/a");
    for (const auto& [hides, code, collected, state] : rows) {
        SCOPED_TRACE(::testing::Message() << hides << " " << code);
        ListWorld world(workerThat("echo Error: " + std::to_string(code)));
        const ListedFile file = world.list->files().append(
            hides ? File::initWithPath(m_tree.path("t/a"))
                  : File::fileWithPath(m_tree.path("t/.SYS_INDEX/a"), m_tree.path("t/a"), 1));
        EXPECT_FALSE(hides ? world.list->hideFiles({file}, true) : world.list->unhideFiles({file}, true));
        EXPECT_EQ(file->state(), state);
        std::vector<ErrorEntry> expected;
        if (!collected.isNull())
            expected.push_back({"a", collected});
        EXPECT_EQ(world.list->hideOperations().errors(), expected);
        EXPECT_EQ(world.list->hideOperations().lastBatch().front().errorCode, code);
    }
}

TEST_F(HideOperationsTest, OffersAdministratorRightsAgainAndAgain) {
    Authority authority;
    const std::string file = m_tree.makeFile("t/a");
    for (const bool hides : {true, false}) {
        ListWorldOptions options = workerThat("echo Error: 3");
        options.authority = &authority;
        options.pkexec = m_tree.path("no-pkexec");
        ListWorld world(options);
        world.defaults.set("allowPrivilidgedFiles", true);
        const ListedFile listed = hides ? world.add(file)
                                        : world.list->files().append(File::fileWithPath(
                                              m_tree.makeFile("t/.SYS_INDEX/a"), file, File::Hidden));
        ExpectedAlert question = {.title = hides ? "Veilkeep could not hide some of selected files"
                                                 : "Unable to unhide some of selected files",
                                  .answer = "Authentificate",
                                  .buttons = QStringList{"Authentificate", "Cancel"},
                                  .style = Alert::Style::Critical};
        world.presenter.expect(question);
        world.presenter.expect(question);
        question.answer = "Cancel";
        world.presenter.expect(question);
        EXPECT_FALSE(hides ? world.list->hideOperations().hideFile(listed, false, false)
                           : world.list->hideOperations().unhideFile(listed, false, false));
        EXPECT_EQ(listed->state(), hides ? File::Visible : File::Hidden);
    }
    EXPECT_EQ(authority.questions, 2);
}

// Items that are hidden only because a folder above them is.
TEST_F(HideOperationsTest, BringsBackWhatIsInAHiddenFolder) {
    const std::string item = m_tree.makeFile("t/top/mid/low/f.txt", "content");
    m_tree.makeDirectory("t/top/mid/low");
    ::symlink("f.txt", m_tree.path("t/top/mid/low/link").c_str());
    const auto question = [&](const QString& answer) {
        return ExpectedAlert{.title = "Parent directory is hidden.",
                             .answer = answer,
                             .buttons = QStringList{"Unhide Top Level", "Cancel"}};
    };
    ListWorld world;
    const ListedFile file = world.add(item);
    const ListedFile link = world.add(m_tree.path("t/top/mid/low/link"));
    const ListedFile top = world.add(m_tree.path("t/top"));
    ASSERT_TRUE(world.list->hideFiles({top}, false));
    EXPECT_EQ(file->path(), m_tree.path("t/.SYS_INDEX/pot/mid/low/f.txt")) << "the record did not follow";
    EXPECT_EQ(file->originalPath(), item);
    EXPECT_EQ(file->state(), File::Hidden);

    world.presenter.expect(question("Cancel"));
    EXPECT_FALSE(world.list->unhideFiles({file}, false));
    EXPECT_EQ(top->state(), File::Hidden);

    EXPECT_FALSE(world.list->unhideFiles({file}, true));
    EXPECT_EQ(world.list->hideOperations().errors().back().errorCode, "Parent directory is hidden.");

    world.presenter.expect(question("Unhide Top Level"));
    EXPECT_TRUE(world.list->unhideFiles({file}, false));
    EXPECT_EQ(readFile(item), "content");
    for (const ListedFile& listed : {top, file, link})
        EXPECT_EQ(listed->state(), File::Visible) << listed->path();
    EXPECT_EQ(file->path(), item);

    // The folder is hidden, but not listed.
    ASSERT_TRUE(world.list->hideFiles({top}, false));
    world.list->removeFileFromList(top);
    world.presenter.expect({.title = "Parent directory is hidden.", .answer = "OK"});
    EXPECT_FALSE(world.list->unhideFiles({file}, false));
    EXPECT_FALSE(world.list->unhideFiles({file}, true));
    EXPECT_EQ(world.list->hideOperations().errors().back().errorCode, "Parent directory is hidden");
}

// The worker's answer is not all that counts.
TEST_F(HideOperationsTest, LooksAtTheDiskBeforeItCallsAnItemBroken) {
    struct Row {
        const char* what;
        std::string script;
        bool moves;
    };
    const std::string move = "mkdir -p \"${p%/*}/.SYS_INDEX\"; mv \"$p\" \"${p%/*}/.SYS_INDEX/a\"; ";
    const Row rows[] = {
        {"another worker was faster", move + "echo Error: 2", true},
        {"killed after the move", move + "kill -9 $$", true},
        {"killed before", "kill -9 $$", false},
        {"names a place where nothing is", "echo NewFilename: /nowhere; exit 1", false},
        {"names no place", "echo NewFilename: ; exit 1", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ListWorld world(workerThat("for p; do :; done; " + row.script));
        const ListedFile file = world.add(m_tree.makeFile(std::string(row.what) + "/a"));
        EXPECT_EQ(world.list->hideFiles({file}, true), row.moves);
        EXPECT_EQ(file->state(), row.moves ? File::Hidden : File::Broken);
        EXPECT_TRUE(exists(std::string(file->path())));
    }
}

TEST_F(HideOperationsTest, SavesBeforeAndAfterABatchAndHidesNothingWithoutThat) {
    const std::string listFile = OwnPlaces::current().dataDirectory + "/FilesInfo.Veilkeep";
    ListWorld world;
    const ListedFile file = world.add(m_tree.makeFile("t/a"));
    ASSERT_TRUE(world.list->hideFiles({file}, false));
    EXPECT_EQ(world.list->readFilesInfoFileAtPath(listFile)->front().state(), File::Hidden);

    EXPECT_TRUE(runInChild([&] {
        world.add(m_tree.makeFile("t/b"));
        ASSERT_TRUE(failCall(SYS_renameat, ENOSPC) && failCall(SYS_renameat2, ENOSPC) &&
                    failCall(SYS_rename, ENOSPC));
        world.presenter.expect({.title = "Nothing was hidden.", .answer = "OK"});
        EXPECT_FALSE(world.list->hideFiles({world.list->files().all().back()}, false));
        EXPECT_TRUE(exists(m_tree.path("t/b")));
        EXPECT_NE(world.presenter.shown().back().message.indexOf("No space left on device"), -1)
            << world.presenter.shown().back().message.toStdString();
    }));
    // The item on its way back needs no list.
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_fsync, EIO));
        (void)world.list->unhideFiles({file}, false);
        EXPECT_TRUE(exists(m_tree.path("t/a")));
        EXPECT_TRUE(world.list->saveTrouble());
    }));
}

TEST_F(HideOperationsTest, GoesOnAfterFailuresAndEndsWithAnException) {
    ListWorld world;
    FilesViewController::Files files;
    for (const char* name : {"t/a", "t/b", "t/c"})
        files.push_back(world.add(m_tree.makeFile(name)));
    m_tree.makeFile("t/.SYS_INDEX/a");
    EXPECT_FALSE(world.list->hideFiles(files, true));
    EXPECT_EQ(files[2]->state(), File::Hidden);
    EXPECT_EQ(world.list->hideOperations().errors().size(), 1U);

    m_tree.makeFile("t/b");
    world.presenter.expect({.title = "Error for file: " + QString::fromStdString(m_tree.path("t/b")),
                            .answer = "OK",
                            .whileOpen = [] { throw std::runtime_error("out of sorts"); }});
    EXPECT_TRUE(world.list->unhideFiles({files[1], files[2]}, false)) << "the result keeps its value";
    EXPECT_NE(log().find("Error: out of sorts"), std::string::npos);
    EXPECT_EQ(files[2]->state(), File::Hidden);
    EXPECT_EQ(world.progressView.log().back(), "end");
    EXPECT_FALSE(OneAlertLock::onlyOneAlertSheetAtATimeLock().isTaken());
}

TEST_F(HideOperationsTest, LeavingEndsAnUnhideAndLetsAHideFinish) {
    for (const bool hides : {true, false}) {
        ListWorld world;
        FilesViewController::Files files;
        for (int number = 0; number < 3; ++number)
            files.push_back(
                world.add(m_tree.makeFile((hides ? "hide/" : "unhide/") + std::to_string(number))));
        if (!hides) {
            ASSERT_TRUE(world.list->hideFiles(files, false));
        }
        QStringList order;
        QObject::connect(&world.list->files(), &FileList::fileChanged, [&](const ListedFile& file) {
            if (file != files.front() || !order.isEmpty())
                return;
            order.push_back("first");
            world.turns.run([&] {
                order.push_back("request");
                EXPECT_FALSE(world.list->unhideFiles({files.back()}, false)) << "shown to nobody";
                EXPECT_TRUE(world.alerts.isNobodyThere());
            });
            world.turns.leave([&] { order.push_back("leaving"); });
            world.turns.run([&] { EXPECT_FALSE(world.turns.isLeaving()) << "it came after the leaving"; });
        });
        world.turns.run([&] {
            EXPECT_EQ(hides ? world.list->hideFiles(files, false) : world.list->unhideFiles(files, false),
                      hides);
        });
        EXPECT_EQ(files.back()->state(), File::Hidden);
        EXPECT_EQ(order, (QStringList{"first", "leaving", "request"}));
        EXPECT_FALSE(world.alerts.isNobodyThere());
    }
}

TEST_F(HideOperationsTest, TakesInWhatWorkersLeftBehind) {
    const std::string folder = OwnPlaces::current().inProgressDirectory;
    const auto leave = [&](const std::string& original, const std::string& current, int action) {
        ASSERT_TRUE(writeRecord(folder, {original, current, 1, action}));
    };
    Notifications notifications;
    ListWorld world({.notifications = &notifications});
    const ListedFile listed = world.add(m_tree.makeFile("t/listed", "mine"));
    ::mkdir(m_tree.path("t/.SYS_INDEX").c_str(), 0755);
    ASSERT_EQ(::rename(m_tree.path("t/listed").c_str(), m_tree.path("t/.SYS_INDEX/detsil").c_str()), 0);
    leave(m_tree.path("t/listed"), m_tree.path("t/.SYS_INDEX/detsil"), 1);
    leave(m_tree.path("t/new"), m_tree.makeFile("t/.SYS_INDEX/wen"), 1);
    writeFile(folder + "/lacking.plist",
              "<plist version=\"1.0\"><dict><key>OriginalPath</key><string>/x</string></dict></plist>");

    // While they cannot be saved the records stay.
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_fsync, EIO));
        world.list->checkTempFiles();
        EXPECT_EQ(InProgressFolder(folder).entries().value().size(), 3U);
    }));
    ASSERT_TRUE(notifications.post("com.ostrel.Veilkeep.rereadTempFiles", {}));
    EXPECT_EQ(InProgressFolder(folder).entries().value().size(), 0U);
    EXPECT_EQ(listed->path(), m_tree.path("t/.SYS_INDEX/detsil"));
    EXPECT_EQ(listed->state(), File::Hidden);
    const ListedFile added = world.list->findFileWithOriginalPath(m_tree.path("t/new"));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->state(), 1);
    EXPECT_EQ(world.list->files().size(), 2U);
}

} // namespace
} // namespace veilkeep::test
