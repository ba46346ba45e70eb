#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/Strace.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <sstream>
#include <vector>

namespace veilkeep {
namespace {

using test::readFile;
using test::ScratchTree;

// Runs the program that saves under strace, with one system call made to fail.
class SaveFault : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test::straceWorks())
            GTEST_SKIP() << "strace cannot trace here";
        tree.makeDirectory("d");
    }

    std::string path() const { return tree.path("d/list"); }

    std::string save(std::vector<std::string> arguments, const std::vector<std::string>& faults = {}) const {
        std::vector<std::string> options = {"-f", "-y",
                                            "-o", tree.path("trace"),
                                            "-e", "trace=openat,write,fsync,close,renameat,?link,linkat"};
        for (const std::string& fault : faults)
            options.insert(options.end(), {"-e", "inject=" + fault});
        arguments.insert(arguments.begin(), VEILKEEP_SAVE_FILE);
        const test::ProgramRun run = test::runProgram(test::traced(options, arguments));
        return run.exitStatus == 0 ? run.output : "did not end well: " + run.output + run.errors;
    }

    std::vector<std::string> trace() const {
        std::istringstream lines(readFile(tree.path("trace")));
        std::vector<std::string> all;
        for (std::string line; std::getline(lines, line);)
            all.push_back(line);
        return all;
    }

    // Which of the calls of this name in the last run was the first to have the text in its line; 0 for none.
    int indexOf(const std::string& call, const std::string& text) const {
        int index = 0;
        for (const std::string& line : trace()) {
            if (line.find(" " + call + "(") == std::string::npos)
                continue;
            ++index;
            if (line.find(text) != std::string::npos)
                return index;
        }
        return 0;
    }

    std::set<std::string> temporaryNames() const {
        std::set<std::string> names;
        for (const std::string& line : trace())
            if (const auto at = line.find(".veilkeep-"); at != std::string::npos)
                names.insert(line.substr(at, 26));
        return names;
    }

    std::set<std::string> names() const { return test::namesIn(tree.path("d")); }

    void startOver() {
        for (const std::string& name : names())
            std::filesystem::remove(tree.path("d/" + name));
        tree.makeFile("d/list", "old");
    }

    ScratchTree tree;
};

struct Row {
    const char* call;
    std::string text; // in the line of the call that fails
    const char* error;
    std::string answers;
    const char* content; // after the first save
};

std::string failed(const char* operation, int error) {
    return std::string("failed ") + operation + " " + std::to_string(error) + "\n";
}

TEST_F(SaveFault, KeepsTheOldFileOrSaysThatTheNewOneMayNotLast) {
    const std::string temporary = ".veilkeep-";
    const std::string directory = "/d>)";
    const Row rows[] = {
        {"openat", temporary, "ENOSPC", failed("open", ENOSPC), "old"},
        {"openat", temporary, "EDQUOT", failed("open", EDQUOT), "old"},
        {"openat", temporary, "EMFILE", failed("open", EMFILE), "old"},
        {"openat", temporary, "EINTR", "written\n", "new"},
        {"write", temporary, "ENOSPC", failed("write", ENOSPC), "old"},
        {"write", temporary, "EIO", failed("write", EIO), "old"},
        {"write", temporary, "EINTR", "written\n", "new"},
        {"fsync", temporary, "EIO", failed("fsync", EIO), "old"},
        {"fsync", temporary, "ENOSPC", failed("fsync", ENOSPC), "old"},
        {"fsync", temporary, "EINTR", "written\n", "new"},
        {"close", temporary, "EIO", failed("close", EIO), "old"},
        {"close", temporary, "EINTR", "written\n", "new"},
        {"renameat", temporary, "EIO", failed("rename", EIO), "old"},
        {"fsync", directory, "EIO", "not durable fsync 5\n", "new"},
        {"fsync", directory, "ENOSPC", "not durable fsync 28\n", "new"},
        {"fsync", directory, "EINTR", "written\n", "new"},
        {"fsync", directory, "EINVAL", "written\n", "new"}, // a file system that knows no such thing
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.call) + " " + row.text + " " + row.error);
        startOver();
        ASSERT_EQ(save({path(), "new"}), "written\n");
        const int index = indexOf(row.call, row.text);
        ASSERT_GT(index, 0) << "the save makes no such call";

        startOver();
        const std::string fault =
            std::string(row.call) + ":error=" + row.error + ":when=" + std::to_string(index);
        EXPECT_EQ(save({path(), "new"}, {fault}), row.answers);
        EXPECT_EQ(readFile(path()), row.content);
        std::set<std::string> left = names();
        EXPECT_EQ(left.erase("list"), 1U);
        EXPECT_LE(left.size(), 1U); // the earlier copy that a save which went through has taken
        for (const std::string& name : left)
            EXPECT_TRUE(name.starts_with("list.earlier-") && row.content == std::string("new")) << name;

        startOver();
        const bool isWritten = row.answers == "written\n";
        EXPECT_EQ(save({path(), "new", "new"}, {fault}),
                  row.answers + (isWritten ? "unchanged\n" : "written\n"));
        EXPECT_EQ(readFile(path()), "new");
        EXPECT_EQ(temporaryNames().size(), isWritten ? 1U : 2U);
    }
}

// The process that wrote it may have died before it had synced it.
TEST_F(SaveFault, SyncsAFileThatWasOnlyRead) {
    startOver();
    EXPECT_EQ(save({path(), "old", "old"}, {"fsync:error=EIO:when=3"}), "unchanged\nunchanged\n");
    const std::pair<const char*, const char*> rows[] = {{"1", "d/list>"}, {"2", "/d>"}};
    for (const auto& [index, text] : rows) {
        startOver();
        const std::string fault = std::string("fsync:error=EIO:when=") + index;
        EXPECT_EQ(save({path(), "old", "old"}, {fault}), "not durable fsync 5\nwritten\n");
        EXPECT_EQ(std::to_string(indexOf("fsync", text)), index);
    }
}

TEST_F(SaveFault, KeepsFilesWithoutHardLinks) {
    const std::string noLinks = "?link,linkat:error=EPERM";
    const auto contents = [&] {
        std::multiset<std::string> all;
        for (const std::string& name : names())
            all.insert(name.substr(0, 12) + "=" + readFile(tree.path("d/" + name)));
        return all;
    };
    startOver();
    EXPECT_EQ(save({path(), "new"}, {noLinks}), "written\n");
    EXPECT_EQ(contents(), (std::multiset<std::string>{"list=new", "list.earlier=old"}));

    startOver();
    EXPECT_EQ(save({"--unread", path(), "new"}, {noLinks}), "written\n");
    EXPECT_EQ(contents(), (std::multiset<std::string>{"list=new", "list.damaged=old"}));

    startOver();
    EXPECT_EQ(save({"--unread", path(), "new", "new"}, {noLinks, "renameat:error=EIO:when=1"}),
              failed("rename", EIO) + "written\n");
    EXPECT_EQ(contents(), (std::multiset<std::string>{"list=new", "list.damaged=old"}));

    startOver();
    EXPECT_EQ(save({"--unread", path(), "new"}, {noLinks, "renameat:error=EIO"}), failed("rename", EIO));
    EXPECT_EQ(contents(), (std::multiset<std::string>{"list=old"}));
}

} // namespace
} // namespace veilkeep
