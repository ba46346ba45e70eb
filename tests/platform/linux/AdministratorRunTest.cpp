// Moves with administrator rights by a real pkexec and polkit, from an ordinary user's point of view.

#include "core/environment/XdgDirectories.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/SecurityController.h"
#include "platform/linux/PolkitAuthority.h"
#include "tests/platform/linux/PolkitWorld.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veilkeep::test {
namespace {

using Answer = RightsAuthority::Answer;

struct Row {
    const char* what;
    std::string rule; // of polkit
    Answer answer;    // to authorize()
    int code;         // of the runs
};

const Row rows[] = {
    {"granted", "YES", Answer::Granted, 0},
    {"refused", "NO", Answer::Refused, 3},
    {"no agent", "AUTH_ADMIN_KEEP", Answer::NoAgent, 3},
    {"no agent each time", "", Answer::AskedEachRun, 3}, // as for sessions that are not active
};

class AdministratorRunTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (const std::string missing = PolkitWorld::whatIsMissing(); !missing.empty())
            GTEST_SKIP() << missing;
        give(m_tree.home());
        give(m_tree.makeDirectory("t"));
        m_tree.makeFile("t/root's folder/letter.txt", "content");
    }

    static void give(const std::string& path) {
        ASSERT_EQ(::chown(path.c_str(), ordinaryUser, ordinaryUser), 0);
    }

    void tryAsUser(const Row& row);
    void tryIn(const Row& row);
    void tryInItsOwnSystem(const Row& row);

    const ScratchTree m_tree;
    const std::string m_reason = m_tree.path("reason to skip");
    const std::string m_item = m_tree.path("t/root's folder");
    const std::string m_hidden = m_tree.path("t/.SYS_INDEX/redlof s'toor");
};

// The ordinary user's process.
void AdministratorRunTest::tryAsUser(const Row& row) {
    becomeOrdinaryUser();
    UserDefaults defaults;
    PolkitAuthority authority;
    const std::string folder = OwnPlaces::current().inProgressDirectory;
    SecurityController controller(authority, defaults, folder);
    CloakWorkerComunicator comunicator(PolkitWorld::worker, folder, {}, &controller);

    EXPECT_EQ(comunicator.hideFileWithPath(m_item).errorCode(), 3);
    EXPECT_EQ(comunicator.hideFileWithPath(m_item, true).errorCode(), 3) << "before authorize()";
    controller.authorize();
    EXPECT_EQ(controller.authorized(), row.code == 0 || row.answer == Answer::AskedEachRun);
    const CloakWorkerResult hidden = comunicator.hideFileWithPath(m_item, true);
    EXPECT_EQ(hidden.errorCode(), row.code);
    EXPECT_EQ(hidden.newFileName(), row.code == 0 ? m_hidden : std::string());
    EXPECT_EQ(exists(m_item), row.code != 0);
    if (row.code != 0)
        return;
    EXPECT_EQ(comunicator.unhideFileWithPath(m_hidden).errorCode(), 3);
    EXPECT_EQ(comunicator.unhideFileWithPath(m_hidden, true), CloakWorkerResult::resultWithFileName(m_item));
}

void AdministratorRunTest::tryInItsOwnSystem(const Row& row) {
    std::string reason = ::unshare(CLONE_NEWPID) == 0 ? enterPrivateMounts() : "unshare: not allowed";
    if (!reason.empty())
        return writeFile(m_reason, reason);
    EXPECT_TRUE(runInChild([&] {
        try {
            tryIn(row);
        } catch (const PolkitWorld::NotAllowed& failure) {
            writeFile(m_reason, failure.what());
        }
    }));
}

// The first process of a system of its own.
void AdministratorRunTest::tryIn(const Row& row) {
    const PolkitWorld world(m_tree, row.rule);
    EXPECT_TRUE(runInChild([&] { tryAsUser(row); }));
}

TEST_F(AdministratorRunTest, DoesWhatPolkitAndTheUserAllow) {
    const auto before = snapshotOf(m_item);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_TRUE(runInChild([&] { tryInItsOwnSystem(row); }));
        if (exists(m_reason))
            GTEST_SKIP() << readFile(m_reason);
        EXPECT_EQ(snapshotOf(m_item), before);
        EXPECT_FALSE(exists(m_tree.path("t/.SYS_INDEX")));
    }
}

} // namespace
} // namespace veilkeep::test
