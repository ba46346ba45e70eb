#include "core/log/Log.h"

#include "core/base/UniqueFd.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "tests/support/WaitUntil.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <sstream>
#include <thread>

namespace veilkeep {
namespace {

using test::modeOf;
using test::readFile;
using test::ScratchTree;

// The text of a line without the time and the process, which it must have.
std::string textOf(const std::string& line) {
    constexpr std::size_t timeSize = std::string_view("2026-01-31T12:00:00Z ").size();
    const std::size_t end = line.find(' ', timeSize);
    const bool isEntry = end != std::string::npos && line.substr(0, 2) == "20" && line[timeSize - 2] == 'Z' &&
                         line.find_first_not_of("0123456789", timeSize) == end;
    return isEntry ? line.substr(end + 1) : "not an entry: " + line;
}

std::vector<std::string> textsIn(const std::string& path) {
    const std::string content = readFile(path);
    EXPECT_TRUE(content.empty() || content.back() == '\n') << path;
    std::istringstream lines(content);
    std::vector<std::string> texts;
    for (std::string line; std::getline(lines, line);)
        texts.push_back(textOf(line));
    return texts;
}

TEST(Log, SharedLogLiesInTheStateDirectory) {
    const ScratchTree tree;
    EXPECT_TRUE(test::runInChild([&] {
        errno = ERANGE;
        logLine("first");
        EXPECT_EQ(errno, ERANGE);
        logLine("second");
        const std::string directory = tree.home() + "/.local/state/Veilkeep";
        EXPECT_EQ(textsIn(directory + "/Veilkeep.log"), (std::vector<std::string>{"first", "second"}));
        EXPECT_EQ(modeOf(directory + "/Veilkeep.log"), 0600U);
        EXPECT_EQ(modeOf(directory), 0700U);
    }));
}

TEST(Log, RootWritesNothingForAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root acts for others";
    const ScratchTree tree;
    EXPECT_TRUE(test::runInChild([&] {
        ::setenv("PKEXEC_UID", "65534", 1);
        logLine("text");
        EXPECT_TRUE(Log::shared().path().empty());
    }));
}

TEST(Log, EscapesWhatCouldHarm) {
    const std::pair<std::string, std::string> rows[] = {
        {"plain \xc3\xa4 \xf0\x9f\x98\x80 text", "plain \xc3\xa4 \xf0\x9f\x98\x80 text"},
        {"two\nlines\r", "two\\x0alines\\x0d"},
        {"\x1b[31m\x7f\t", "\\x1b[31m\\x7f\\x09"},
        {"c1 \xc2\x9b", "c1 \\xc2\\x9b"},
        {"bytes \xff\xfe \xed\xa0\x80", "bytes \\xff\\xfe \\xed\\xa0\\x80"},
        {"\\x0a", "\\x5cx0a"},
        {std::string("nul \0 on", 8), "nul \\x00 on"},
        {std::string(Log::maximumTextSize, 'a'), std::string(Log::maximumTextSize, 'a')},
        {std::string(Log::maximumTextSize + 1, 'a'), std::string(Log::maximumTextSize, 'a') + "[cut]"},
    };
    const ScratchTree tree;
    Log log(tree.path("log"));
    std::vector<std::string> expected;
    for (const auto& [text, written] : rows) {
        log.write(text);
        expected.push_back(written);
    }
    EXPECT_EQ(textsIn(log.path()), expected);
}

// 4 processes of 2 threads each, just over one turn-over's worth: every line must be in one of the two files.
TEST(Log, LosesNoLineOfManyWriters) {
    const ScratchTree tree;
    constexpr int writers = 8, linesOfEach = 400;
    const auto write = [&](int writer) {
        Log log(tree.path("log"));
        for (int i = 0; i < linesOfEach; ++i)
            log.write(std::to_string(writer) + "/" + std::to_string(i) + " " + std::string(400, 'x') + ".");
    };
    std::vector<pid_t> children;
    for (int child = 0; child < writers / 2; ++child)
        children.push_back(test::startChild([&] {
            std::thread other(write, 2 * child);
            write(2 * child + 1);
            other.join();
        }));
    for (const pid_t child : children)
        EXPECT_TRUE(test::endedWell(child));

    std::map<std::string, int> seen;
    for (const char* name : {"log.1", "log"}) {
        EXPECT_LE(readFile(tree.path(name)).size(), Log::turnOverSize);
        for (const std::string& text : textsIn(tree.path(name))) {
            EXPECT_TRUE(text.ends_with(" " + std::string(400, 'x') + ".")) << text;
            ++seen[text.substr(0, text.find(' '))];
        }
    }
    EXPECT_EQ(seen.size(), std::size_t{writers * linesOfEach});
    for (const auto& [line, count] : seen)
        EXPECT_EQ(count, 1) << line;
}

TEST(Log, DropsQuietlyWhatItCannotWrite) {
    const ScratchTree tree;
    tree.makeFile("file");
    tree.makeDirectory("directory");
    tree.makeFile("bait", "untouched");
    ASSERT_EQ(::symlink("bait", tree.path("link").c_str()), 0);
    ASSERT_EQ(::mkfifo(tree.path("fifo").c_str(), 0600), 0);
    for (const std::string& path : {tree.path("file/log"), tree.path("directory"), tree.path("link"),
                                    tree.path("fifo"), std::string("relative"), std::string()})
        Log(path).write("text");
    EXPECT_EQ(readFile(tree.path("bait")), "untouched");
    EXPECT_FALSE(test::exists("relative"));
}

TEST(Log, WritesWholeLinesOnAFullDisk) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can mount";
    const ScratchTree tree;
    const std::string disk = tree.makeDirectory("disk");
    EXPECT_TRUE(test::runInChild([&] {
        const test::PrivateMount mount("some", disk, "tmpfs", 0, "size=16k");
        ASSERT_EQ(mount.whyMissing(), "");
        Log log(disk + "/log");
        const std::string text(700, 'x');
        for (int i = 0; i < 50; ++i)
            log.write(text);
        const auto texts = textsIn(log.path());
        EXPECT_GT(texts.size(), 5U);
        EXPECT_LT(texts.size(), 50U);
        for (const std::string& line : texts)
            EXPECT_EQ(line, text);
    }));
}

// Another program that holds the lock and does not move on costs time, not lines.
TEST(Log, GoesOnWhileAnotherHoldsTheLock) {
    const ScratchTree tree;
    Log log(tree.path("log"), std::chrono::milliseconds(5));
    log.write("first");
    const UniqueFd holder(::open(log.path().c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(holder.get(), LOCK_EX), 0);
    log.write("second");
    EXPECT_EQ(textsIn(log.path()), (std::vector<std::string>{"first", "second"}));
}

int openCount(const std::string& path) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closedMeanwhile;
        count += std::filesystem::read_symlink(entry.path(), closedMeanwhile) == path ? 1 : 0;
    }
    return count;
}

TEST(Log, FollowsATurnOverThatItWaitedFor) {
    const ScratchTree tree;
    Log log(tree.path("log"), std::chrono::minutes(1));
    log.write("old");
    UniqueFd holder(::open(log.path().c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(holder.get(), LOCK_EX), 0);
    std::thread writer([&] { log.write("new"); });
    EXPECT_TRUE(test::waitUntil([&] { return openCount(log.path()) == 2; }));
    std::filesystem::rename(log.path(), tree.path("log.1"));
    holder.reset();
    writer.join();
    EXPECT_EQ(textsIn(tree.path("log.1")), std::vector<std::string>{"old"});
    EXPECT_EQ(textsIn(log.path()), std::vector<std::string>{"new"});
}

} // namespace
} // namespace veilkeep
