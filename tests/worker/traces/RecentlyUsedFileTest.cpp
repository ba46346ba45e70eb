#include "worker/traces/RecentlyUsedFile.h"

#include "core/base/FileUri.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"
#include "worker/traces/RecentlyUsedLock.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

class RecentlyUsedFile : public ::testing::Test {
protected:
    std::string listOf(const std::vector<std::string>& uris) {
        std::string text = "<xbel>\n";
        for (const std::string& uri : uris)
            text += "  <bookmark href=\"" + uri + "\"/>\n";
        return text + "</xbel>\n";
    }
    std::string makeList(const std::vector<std::string>& paths, unsigned int mode = 0600) {
        std::vector<std::string> uris;
        for (const std::string& path : paths)
            uris.push_back(fileUri(path, UriSpelling::Qt));
        return m_tree.makeFile("home/list", listOf(uris), mode);
    }
    Result<bool> remove(const std::vector<std::string>& paths) {
        TracedItems items(paths);
        return removeFromRecentlyUsed(m_tree.path("home/list"), items);
    }

    ScratchTree m_tree;
};

TEST_F(RecentlyUsedFile, ItemsAndWhatLiesBelow) {
    const std::string real = m_tree.makeDirectory("real");
    const std::string link = m_tree.path("link"), otherLink = m_tree.path("other");
    ASSERT_EQ(::symlink("real", link.c_str()), 0);
    ASSERT_EQ(::symlink("link", otherLink.c_str()), 0);
    makeList({link + "/dir", real + "/dir/;[x]/y", otherLink + "/dir/z", real + "/\xff*.txt", real + "/dir2",
              real + "/dir.txt", real + "/di", real, m_tree.path("dir"), "/dir/x"});
    EXPECT_TRUE(remove({link + "/dir", real + "/\xff*.txt"}).value());
    EXPECT_EQ(readFile(m_tree.path("home/list")),
              listOf({fileUri(real + "/dir2", UriSpelling::Qt), fileUri(real + "/dir.txt", UriSpelling::Qt),
                      fileUri(real + "/di", UriSpelling::Qt), fileUri(real, UriSpelling::Qt),
                      fileUri(m_tree.path("dir"), UriSpelling::Qt), "file:///dir/x"}));
    EXPECT_FALSE(remove({link + "/dir"}).value());
    EXPECT_EQ(namesIn(m_tree.home()), (std::set<std::string>{"list", "runtime"}));
}

TEST_F(RecentlyUsedFile, ModeGroupAndLinkStay) {
    for (const unsigned int mode : {0600U, 0444U, 0664U}) {
        const std::string list = makeList({"/a", "/b"}, mode);
        if (isRoot()) {
            ASSERT_EQ(::chown(list.c_str(), static_cast<uid_t>(-1), ordinaryUser), 0);
        }
        EXPECT_TRUE(remove({"/a"}).value());
        EXPECT_EQ(readFile(list), listOf({"file:///b"}));
        struct stat status = {};
        ASSERT_EQ(::stat(list.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
        EXPECT_EQ(status.st_gid, isRoot() ? ordinaryUser : ::getegid());
    }
    ASSERT_EQ(::rename(makeList({"/a"}).c_str(), m_tree.path("home/elsewhere").c_str()), 0);
    ASSERT_EQ(::symlink("elsewhere", m_tree.path("home/list").c_str()), 0);
    EXPECT_TRUE(remove({"/a"}).value());
    EXPECT_EQ(readFile(m_tree.path("home/elsewhere")), listOf({}));
    EXPECT_EQ(namesIn(m_tree.home()), (std::set<std::string>{"elsewhere", "list", "runtime"}));
}

TEST_F(RecentlyUsedFile, WhatIsNoListOfOursIsLeftAlone) {
    EXPECT_FALSE(remove({"/a"}).value());
    const std::string directory = m_tree.makeDirectory("home/list");
    EXPECT_FALSE(remove({"/a"}).value());
    ASSERT_EQ(::rmdir(directory.c_str()), 0);

    const std::string damaged = listOf({"file:///a"}) + "<";
    m_tree.makeFile("home/list", damaged);
    const auto outcome = remove({"/a"});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code, ErrorCode::Damaged);
    EXPECT_EQ(readFile(m_tree.path("home/list")), damaged);
}

TEST_F(RecentlyUsedFile, ReadOnlyPlacesAndOtherUsersFiles) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to act as two users";
    const std::string list = makeList({"/a"}, 0666);
    ASSERT_EQ(::chown(list.c_str(), ordinaryUser, ordinaryUser), 0);
    EXPECT_FALSE(remove({"/a"}).value());
    EXPECT_TRUE(runInChild([&] {
        becomeOrdinaryUser();
        const auto outcome = remove({"/a"}); // the directory is root's
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error().systemError, EACCES);
    }));
    EXPECT_EQ(readFile(list), listOf({"file:///a"}));
}

TEST_F(RecentlyUsedFile, LocksOfOthers) {
    char host[256] = {};
    ASSERT_EQ(::gethostname(host, sizeof host - 1), 0);
    const pid_t dead = startChild([] {});
    ASSERT_TRUE(endedWell(dead));
    struct Row {
        std::string name, content;
        bool isTaken;
    };
    const std::string deadHere = std::to_string(dead) + "\nkate\n" + host + "\n";
    const Row rows[] = {
        {"of a process that is gone", deadHere + "machine\nboot\n", true},
        {"of a living process", std::to_string(::getpid()) + "\nkate\n" + host + "\n", false},
        {"of another machine", std::to_string(dead) + "\nkate\nelsewhere.example\n", false},
        {"being written", "", false},
    };
    const std::string lockFile = m_tree.path("home/list.lock");
    for (const Row& row : rows) {
        writeFile(lockFile, row.content);
        const RecentlyUsedLock lock(m_tree.path("home/list"), std::chrono::milliseconds(30));
        EXPECT_EQ(lock.isHeld(), row.isTaken) << row.name;
        EXPECT_EQ(readFile(lockFile) == row.content, !row.isTaken) << row.name;
    }
    EXPECT_EQ(readFile(lockFile), "");
    makeList({"/a"});
    EXPECT_TRUE(remove({"/a"}).value()); // a lock that nobody gives back does not keep the trace
    EXPECT_EQ(readFile(m_tree.path("home/list")), listOf({}));
}

} // namespace
} // namespace veilkeep::test
