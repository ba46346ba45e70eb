// Moves with administrator rights by a real pkexec and polkit, from an ordinary user's point of view.

#include "core/environment/XdgDirectories.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/SecurityController.h"
#include "platform/linux/PolkitAuthority.h"
#include "tests/platform/linux/ConsentAgent.h"
#include "tests/platform/linux/PolkitWorld.h"
#include "tests/support/ItemSnapshot.h"
#include "tests/support/PrivateMount.h"
#include "tests/support/RunInChild.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <unistd.h>

#include <optional>

namespace veilkeep::test {
namespace {

using Answer = RightsAuthority::Answer;
using Person = ConsentAgent::Person;

struct Row {
    const char* what;
    std::string rule;             // of polkit
    std::optional<Person> person; // at the agent, where there is one
    Answer answer;                // to authorize()
    int code;                     // of the runs
    std::size_t questions;        // for a hide and an unhide together
};

const Row rows[] = {
    {"granted", "YES", {}, Answer::Granted, 0, 0},
    {"refused", "NO", Person::Consents, Answer::Refused, 3, 0},
    {"no agent", "AUTH_ADMIN_KEEP", {}, Answer::NoAgent, 3, 0},
    {"dismissed", "AUTH_ADMIN_KEEP", Person::Dismisses, Answer::Dismissed, 3, 1},
    {"asked once", "AUTH_ADMIN_KEEP", Person::Consents, Answer::Granted, 0, 1},
    // As the policy itself has it for sessions that are not active.
    {"asked each time", "", Person::Consents, Answer::AskedEachRun, 0, 2},
    {"dismissed each time", "", Person::Dismisses, Answer::AskedEachRun, 3, 1},
    {"no agent each time", "", {}, Answer::AskedEachRun, 3, 0},
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
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const pid_t user = startChild([&] {
        ::close(ready[1]);
        char end = 0;
        EXPECT_EQ(::read(ready[0], &end, 1), 0) << "waits for the agent to be there";
        tryAsUser(row);
    });
    int count = 0;
    const QCoreApplication application(count, nullptr);
    std::optional<ConsentAgent> agent;
    if (row.person)
        agent.emplace(user, *row.person);
    ::close(ready[1]);
    EXPECT_TRUE(endedWell(user));
    EXPECT_EQ(agent ? agent->questions() : 0, row.questions);
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
