#include "core/tracking/HiddenItemScan.h"

#include "core/base/PathText.h"
#include "tests/support/FailingCall.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"
#include "tests/support/ScratchTree.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>
#include <unistd.h>

#include <set>

namespace veilkeep {
namespace {

using namespace test;

struct Findings {
    Result<HiddenItemScan::Summary> summary = HiddenItemScan::Summary();
    std::multiset<std::string> paths;
};

Findings scan(const std::string& directory) {
    Findings findings;
    HiddenItemScan search;
    findings.summary = search.scan(directory, [&](const std::string& path) { findings.paths.insert(path); });
    return findings;
}

class HiddenItemScanTest : public testing::Test {
protected:
    std::multiset<std::string> below(const std::string& directory, std::multiset<std::string> paths) const {
        std::multiset<std::string> full;
        for (const std::string& path : paths)
            full.insert(joinPath(directory, path));
        return full;
    }

    void makeLink(const std::string& target, const std::string& relative) const {
        ASSERT_EQ(::symlink(target.c_str(), m_scratch.path(relative).c_str()), 0);
    }

    const ScratchTree m_scratch;
    const std::string m_tree = m_scratch.makeDirectory("tree");
};

TEST_F(HiddenItemScanTest, FindsEachHiddenItemOnce) {
    m_scratch.makeFile("tree/.SYS_INDEX/elif.txt");
    m_scratch.makeFile("tree/.SYS_INDEX/redlof/plain/.SYS_INDEX/peed");
    m_scratch.makeFile("tree/.SYS_INDEX/redlof/.SYS_INDEX/rennI/.SYS_INDEX/tsomrenni");
    m_scratch.makeFile("tree/.SYS_INDEX/.SYS_INDEX/detsen");
    m_scratch.makeFile("tree/a/b/.SYS_INDEX/\xff\xfe\n\x1b");
    m_scratch.makeDirectory("tree/a/b/.SYS_INDEX/ytpme");
    makeLink("nowhere", "tree/a/b/.SYS_INDEX/knil");
    makeLink("../../..", "tree/a/b/.SYS_INDEX/pool");
    m_scratch.makeDirectory("tree/a/empty/.SYS_INDEX");
    m_scratch.makeFile("tree/a/.SYS_INDEX");
    m_scratch.makeDirectory("tree/c");
    makeLink("../.SYS_INDEX", "tree/c/.SYS_INDEX");
    m_scratch.makeFile("tree/d/.sys_index/no");
    m_scratch.makeFile("tree/d/.SYS_INDEX.old/no");
    makeLink("../d", "tree/d/loop");
    const std::multiset<std::string> expected = {
        ".SYS_INDEX/elif.txt",
        ".SYS_INDEX/redlof",
        ".SYS_INDEX/redlof/plain/.SYS_INDEX/peed",
        ".SYS_INDEX/redlof/.SYS_INDEX/rennI",
        ".SYS_INDEX/redlof/.SYS_INDEX/rennI/.SYS_INDEX/tsomrenni",
        ".SYS_INDEX/.SYS_INDEX/detsen",
        "a/b/.SYS_INDEX/\xff\xfe\n\x1b",
        "a/b/.SYS_INDEX/ytpme",
        "a/b/.SYS_INDEX/knil",
        "a/b/.SYS_INDEX/pool",
    };
    const Findings findings = scan(m_tree);
    ASSERT_TRUE(findings.summary);
    EXPECT_EQ(findings.paths, below(m_tree, expected));
    EXPECT_EQ(findings.summary->found, expected.size());
    EXPECT_EQ(findings.summary->unreadable, 0U);
    EXPECT_FALSE(findings.summary->cancelled);
}

TEST_F(HiddenItemScanTest, LeavesOutPlaceholdersOfItemsThatAreStillVisible) {
    m_scratch.makeFile("tree/report.txt", "content");
    m_scratch.makeFile("tree/.SYS_INDEX/troper.txt", {}, 0);
    m_scratch.makeDirectory("tree/folder");
    m_scratch.makeDirectory("tree/.SYS_INDEX/redlof", 0);
    m_scratch.makeFile("tree/both.txt", "content");
    m_scratch.makeFile("tree/.SYS_INDEX/htob.txt", "closed, with content", 0);
    m_scratch.makeFile("tree/.SYS_INDEX/enola.txt", {}, 0);
    EXPECT_EQ(scan(m_tree).paths, below(m_tree, {".SYS_INDEX/htob.txt", ".SYS_INDEX/enola.txt"}));
}

TEST_F(HiddenItemScanTest, KeepsTheSpellingOfTheDirectory) {
    const std::string index = m_scratch.makeDirectory("tree/.SYS_INDEX");
    m_scratch.makeFile("tree/.SYS_INDEX/meti");
    makeLink("tree", "treeLink");
    makeLink("tree/.SYS_INDEX", "indexLink");
    m_scratch.makeDirectory("other");
    makeLink("../tree", "other/.SYS_INDEX");
    makeLink("../tree/.SYS_INDEX", "other/index");
    const std::pair<std::string, std::string> rows[] = {
        {m_tree, m_tree + "/.SYS_INDEX"},
        {m_scratch.root() + "//./tree", m_scratch.root() + "//./tree/.SYS_INDEX"},
        {index, index},
        {m_scratch.path("treeLink/"), m_scratch.path("treeLink/.SYS_INDEX")},
        {m_scratch.path("indexLink"), index},
        {m_scratch.path("other/index/"), index},
        {m_scratch.path("other/.SYS_INDEX"), m_scratch.path("other/.SYS_INDEX/.SYS_INDEX")},
    };
    for (const auto& [directory, expected] : rows)
        EXPECT_EQ(scan(directory).paths, std::multiset<std::string>{expected + "/meti"}) << directory;
}

TEST_F(HiddenItemScanTest, RefusesADirectoryThatCannotBeRead) {
    const std::string file = m_scratch.makeFile("tree/file");
    EXPECT_EQ(scan(file + "/").summary.error(), Error::system("open", file, ENOTDIR));
    EXPECT_EQ(scan(m_tree + "/no").summary.error(), Error::system("open", m_tree + "/no", ENOENT));
    EXPECT_TRUE(runInChild([&] {
        ASSERT_TRUE(failCall(SYS_getdents64, EIO));
        EXPECT_EQ(scan(m_tree).summary.error(), Error::system("read directory", m_tree, EIO));
    }));
}

TEST_F(HiddenItemScanTest, FindsAnItemOnceThoughTwoMountsShowIt) {
    m_scratch.makeFile("tree/here/.SYS_INDEX/redlof/.SYS_INDEX/meti");
    const std::string there = m_scratch.makeDirectory("tree/there");
    const PrivateMount mount(joinPath(m_tree, "here"), there, nullptr, MS_BIND);
    if (!mount.whyMissing().empty())
        GTEST_SKIP() << mount.whyMissing();
    EXPECT_EQ(scan(m_tree).paths.size(), 2U);
    EXPECT_EQ(scan(there).paths.size(), 2U);
}

} // namespace
} // namespace veilkeep
