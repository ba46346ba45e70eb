#include "tests/support/WaitUntil.h"
#include "tests/worker/WorkerFixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <thread>

namespace veilkeep::test {
namespace {

// File systems that cannot rename without replacing.
class FallbackTest : public WorkerFixture {
protected:
    void SetUp() override {
        if (!straceWorks())
            GTEST_SKIP() << "strace cannot trace here";
    }

    const std::map<std::string, std::function<void(const std::string&)>> m_kinds = {
        {"file", [](const std::string& path) { writeFile(path, "content"); }},
        {"folder",
         [](const std::string& path) {
             ASSERT_EQ(::mkdir(path.c_str(), 0755), 0);
             writeFile(path + "/a", "content");
         }},
        {"link", [](const std::string& path) { ASSERT_EQ(::symlink("nowhere", path.c_str()), 0); }},
    };
};

// What an earlier worker that was killed between its steps has left.
TEST_F(FallbackTest, FinishesMovesThatWereCutOff) {
    const std::vector<std::string> steps = {"renameat2:error=ENOSYS"};
    const std::vector<std::string> noLinks = {"renameat2:error=EOPNOTSUPP", "linkat:error=EPERM"};
    const std::vector<std::string> nothingFails = {"renameat2:error=EINVAL:when=9"};
    struct Row {
        const char* kind;
        const std::vector<std::string>& world;
        std::function<void(const std::string& item, const std::string& target)> leave;
        int number; // of the error
    };
    const auto secondName = [](const std::string& item, const std::string& target) {
        ASSERT_EQ(::link(item.c_str(), target.c_str()), 0);
    };
    const auto placeholder = [](const std::string&, const std::string& target) {
        ASSERT_EQ(::mknod(target.c_str(), S_IFREG, 0), 0);
    };
    const auto placeholderDirectory = [](const std::string&, const std::string& target) {
        ASSERT_EQ(::mkdir(target.c_str(), 0), 0);
    };
    const Row rows[] = {
        {"file", steps, secondName, 0},
        {"file", noLinks, secondName, 0},
        {"file", nothingFails, secondName, 0},
        {"link", steps, secondName, 0},
        {"file", steps, placeholder, 0},
        {"file", noLinks, placeholder, 0},
        {"file", noLinks, placeholderDirectory, 0},
        {"folder", steps, placeholder, 0},
        {"folder", steps, placeholderDirectory, 0},
        {"file", nothingFails, placeholder, 6}, // nobody needs one here: it is a user's
        {"folder", nothingFails, placeholderDirectory, 6},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(&row - rows));
        const std::string path = m_tree.path("t/item.txt");
        m_tree.makeDirectory("t/.SYS_INDEX");
        m_kinds.at(row.kind)(path);
        const auto before = snapshotOf(path);
        row.leave(path, hiddenPathOf(path));
        if (row.number != 0) {
            expectError(workInjected(row.world, "-hide", path), row.number);
        } else {
            expectHidden(workInjected(row.world, "-hide", path), path);
            EXPECT_FALSE(exists(path));
            EXPECT_EQ(snapshotOf(hiddenPathOf(path)), before);
            row.leave(hiddenPathOf(path), path);
            EXPECT_EQ(workInjected(row.world, "-unhide", hiddenPathOf(path)).output, "NewFilename: " + path);
        }
        EXPECT_EQ(snapshotOf(path), before);
        ASSERT_EQ(runProgram({"/bin/rm", "-r", m_tree.path("t")}).exitStatus, 0);
    }
}

// Somebody saves a file of his own over the item's new name before its old one is taken away.
TEST_F(FallbackTest, LeavesWhatIsPutInTheLinksPlace) {
    const std::string path = m_tree.makeFile("t/item.txt", "content"), own = m_tree.makeFile("own", "his");
    expectHidden(work("-hide", path), path);
    ProgramRun run;
    std::thread worker([&] {
        run = workInjected({"renameat2:error=EINVAL", "linkat:delay_exit=2000000"}, "-unhide",
                           hiddenPathOf(path));
    });
    const bool isLinked = waitUntil([&] { return exists(path); });
    EXPECT_TRUE(isLinked);
    EXPECT_EQ(::rename(own.c_str(), path.c_str()), 0);
    worker.join();
    expectError(run, 6);
    EXPECT_EQ(readFile(hiddenPathOf(path)), "content");
    EXPECT_EQ(readFile(path), "his");
}

// An editor saves by replacing at any step of the hide.
TEST_F(FallbackTest, KeepsWhatIsSavedMeanwhile) {
    const std::string path = m_tree.path("t/item.txt"), hidden = hiddenPathOf(path);
    for (const char* const step : {"openat:delay_exit", "renameat:delay_enter", "renameat:delay_exit",
                                   "linkat:delay_exit", "unlinkat:delay_enter"}) {
        SCOPED_TRACE(step);
        m_tree.makeFile("t/item.txt", "content");
        m_tree.makeDirectory("t/.SYS_INDEX");
        const std::string saved = m_tree.makeFile("saved", "new content");
        ProgramRun run;
        std::thread worker([&] {
            run = workInjected({"renameat2:error=EINVAL", std::string(step) + "=300000"}, "-hide", path);
        });
        EXPECT_TRUE(waitUntil([&] { return exists(hidden); }));
        EXPECT_EQ(::rename(saved.c_str(), path.c_str()), 0);
        worker.join();
        expectHidden(run, path);
        EXPECT_TRUE((exists(path) && readFile(path) == "new content") || readFile(hidden) == "new content");
        ASSERT_EQ(runProgram({"/bin/rm", "-r", m_tree.path("t")}).exitStatus, 0);
    }
}

} // namespace
} // namespace veilkeep::test
