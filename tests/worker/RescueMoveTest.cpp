#include "tests/worker/WorkerFixture.h"

#include <stdlib.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

// What the worker does for somebody who has no list.
class RescueMoveTest : public WorkerFixture {
protected:
    ProgramRun rescue(const std::string& path, const RunOptions& options = {}) {
        return runProgram({bundledProgram("cloakWorker"), "-p", "-rescue", path}, options);
    }
};

TEST_F(RescueMoveTest, WhereAnItemComesBackTo) {
    m_tree.makeFile("t/taken.txt");
    m_tree.makeFile("t/taken 2.txt");
    m_tree.makeDirectory("t/taken.d");
    m_tree.makeFile("t/.SYS_INDEX/redlof/stays");
    const std::pair<std::string, std::string> rows[] = {
        {"t/.SYS_INDEX/b a.txt", "t/a b.txt"},
        {"t/.SYS_INDEX/nekat.txt", "t/taken 3.txt"},
        {"t/.SYS_INDEX/.SYS_INDEX/cba", "t/abc"},
        {"t/.SYS_INDEX/XEDNI_SYS.", "t/XEDNI_SYS."},
        {"t/.SYS_INDEX/redlof/.SYS_INDEX/x", "t/.SYS_INDEX/redlof/x"},
    };
    for (const auto& [hidden, visible] : rows) {
        const ProgramRun run = rescue(m_tree.makeFile(hidden, hidden));
        EXPECT_EQ(run.output, "NewFilename: " + m_tree.path(visible));
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_EQ(readFile(m_tree.path(visible)), hidden);
    }
    m_tree.makeFile("t/.SYS_INDEX/nekat.d/inside");
    EXPECT_EQ(rescue(m_tree.path("t/.SYS_INDEX/nekat.d")).output,
              "NewFilename: " + m_tree.path("t/taken.d 2"));
    EXPECT_EQ(namesIn(m_tree.path("t/.SYS_INDEX")), std::set<std::string>{"redlof"});
    EXPECT_FALSE(exists(m_tree.path("t/.SYS_INDEX/redlof/.SYS_INDEX")));
}

TEST_F(RescueMoveTest, FollowsNoLinkWhoeverAsks) {
    m_tree.makeFile("bait/.SYS_INDEX/a");
    m_tree.makeDirectory("t/d");
    ASSERT_EQ(::symlink("../bait", m_tree.path("t/link").c_str()), 0);
    ASSERT_EQ(::symlink("../../bait/.SYS_INDEX", m_tree.path("t/d/.SYS_INDEX").c_str()), 0);
    if (isRoot()) {
        for (const char* path : {"bait", "bait/.SYS_INDEX", "bait/.SYS_INDEX/a"})
            ASSERT_EQ(::lchown(m_tree.path(path).c_str(), ordinaryUser, ordinaryUser), 0);
    }
    const auto before = snapshotOf(m_tree.path("bait"));
    for (const unsigned int user : {0U, ordinaryUser}) {
        if (user != 0 && !isRoot())
            continue;
        expectError(rescue(m_tree.path("t/link/.SYS_INDEX/a"), {user, {}, {}}), 2);
        expectError(rescue(m_tree.path("t/d/.SYS_INDEX/a"), {user, {}, {}}), 5);
        for (const char* path : {"t/d", "t/.SYS_INDEX", "bait/.SYS_INDEX/..", "bait/.SYS_INDEX/.SYS_INDEX"})
            expectError(rescue(m_tree.path(path), {user, {}, {}}), 1);
        expectError(rescue("-", {user, {}, {}}), 1);
    }
    EXPECT_EQ(snapshotOf(m_tree.path("bait")), before);
}

// There is no list that could learn of it.
TEST_F(RescueMoveTest, LeavesNoRecord) {
    const std::string hidden = m_tree.makeFile("t/.SYS_INDEX/a");
    const auto before = snapshotOf(m_tree.home());
    EXPECT_EQ(rescue(hidden, {0, {}, [] { ::close(STDOUT_FILENO); }}).exitStatus, 1);
    EXPECT_TRUE(exists(m_tree.path("t/a")));
    EXPECT_EQ(snapshotOf(m_tree.home()), before);
}

TEST_F(RescueMoveTest, IsNotForAdministratorRights) {
    if (!isRoot())
        GTEST_SKIP() << "needs root to be what pkexec makes";
    const std::string hidden = m_tree.makeFile("t/.SYS_INDEX/a");
    expectError(rescue(hidden, {0, {}, [] { ::setenv("PKEXEC_UID", "65534", 1); }}), 1);
    EXPECT_TRUE(exists(hidden));
}

// Who may rename in a folder may give the name to something that is kept from him, or from others.
TEST_F(RescueMoveTest, RootEmptiesOnlyWhatIsOpenToTheSameUsers) {
    if (!isRoot())
        GTEST_SKIP() << "needs root: an ordinary user moves with no more than his own rights";
    struct Row {
        const char* what;
        unsigned int ownerAbove, modeAbove, owner, mode;
        bool comesBack;
    };
    const Row rows[] = {
        {"a user's own", 1000, 0755, 1000, 0755, true},
        {"a user's own that he closed", 1000, 0755, 1000, 0700, true},
        {"root's in a user's folder", 1000, 0755, 0, 0755, true},
        {"root's closed one in a user's folder", 1000, 0755, 0, 0700, false},
        {"another user's in a shared folder", 0, 01777, 1001, 01777, true},
        {"another user's closed one in a shared folder", 0, 0777, 1001, 0700, false},
        {"another user's in root's folder", 0, 0755, 1001, 0755, false},
        {"one that everybody may write to", 0, 0755, 0, 0777, false},
        {"one that lost its sticky bit", 0, 01777, 0, 0777, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string folder = m_tree.makeDirectory(std::string("t/") + row.what);
        const std::string item = m_tree.makeFile(std::string("t/") + row.what + "/.SYS_INDEX/a");
        const std::string hidden = folder + "/.SYS_INDEX";
        ASSERT_EQ(::chown(folder.c_str(), row.ownerAbove, 0) + ::chown(hidden.c_str(), row.owner, 0), 0);
        ASSERT_EQ(::chmod(folder.c_str(), row.modeAbove) + ::chmod(hidden.c_str(), row.mode), 0);
        if (row.comesBack)
            EXPECT_EQ(rescue(item).output, "NewFilename: " + folder + "/a");
        else
            expectError(rescue(item), 5);
    }
}

} // namespace
} // namespace veilkeep::test
