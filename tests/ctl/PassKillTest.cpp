#include "filelist/FilesInfoFile.h"
#include "groups/AutoHideMark.h"
#include "tests/ctl/KillWorld.h"
#include "tests/support/BackgroundProgram.h"
#include "tests/support/Rounds.h"
#include "tests/support/WaitUntil.h"

#include <cstdio>

namespace veilkeep::test {
namespace {

// Kills veilkeepctl in the midst of a pass over AutoHide groups, right before system calls that concern the
// lists, the mark or a hidden directory. The next start of the service without a window hides what is out,
// and the list says so.
class PassKillTest : public KillWorld, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        KillWorld::SetUp();
        if (IsSkipped())
            return;
        ASSERT_EQ(ctl({"group", "add", "Leaving"}).exitStatus, 0);
        for (int number = 0; number < 5; ++number) {
            m_items.push_back(m_tree.makeFile("t/item" + std::to_string(number), "content"));
            ASSERT_EQ(ctl({"add", m_items.back(), "--group", "Leaving"}).exitStatus, 0);
        }
        ASSERT_EQ(ctl({"group", "autohide", "Leaving", "on"}).exitStatus, 0);
        ASSERT_EQ(ctl({"password", "set", "--password-stdin"}).exitStatus, 0); // nothing is shown by itself
    }

    static Words pass(const std::string& command) {
        return command == "autounhide" ? Words{command, "--password-stdin"} : Words{command};
    }

    void expectHiddenByTheNextStart() {
        BackgroundProgram service({bundledProgram("veilkeepctl"), "watch"});
        const AutoHideMark mark(m_data);
        EXPECT_TRUE(waitUntil([&] {
            return !mark.isSet() &&
                   std::ranges::none_of(m_items, [](const auto& item) { return exists(item); });
        }));
        service.end(SIGKILL);
        const auto records = FilesInfoFile(m_data + "/FilesInfo.Veilkeep").read().value_or({});
        EXPECT_EQ(records.size(), m_items.size());
        for (const File& record : records) {
            EXPECT_EQ(record.state(), File::Hidden);
            EXPECT_TRUE(exists(std::string(record.path()))) << record.path();
        }
    }
};

TEST_P(PassKillTest, IsFinishedByTheNextStart) {
    const Words command = pass(GetParam());
    const Words before = pass(command.front() == "autohide" ? "autounhide" : "autohide");
    ASSERT_EQ(ctl(command).exitStatus, 0);
    ASSERT_EQ(ctl(before).exitStatus, 0);
    const std::vector<TracedCall> calls = callsOfConcern(command);
    const std::size_t step = static_cast<std::size_t>(rounds(4, 1));
    int killed = 0;
    for (std::size_t number = 0; number < calls.size() && !HasFailure(); number += step) {
        SCOPED_TRACE("killed at " + calls[number].line);
        ctl(command);
        ASSERT_EQ(ctl(before).exitStatus, 0);
        killed += isKilledAt(calls[number], command);
        expectHiddenByTheNextStart();
    }
    std::printf("killed at %d of %zu calls\n", killed, calls.size());
    EXPECT_GE(killed, 10);
}

INSTANTIATE_TEST_SUITE_P(Passes, PassKillTest, ::testing::Values("autohide", "autounhide"),
                         [](const auto& pass) { return std::string(pass.param); });

} // namespace
} // namespace veilkeep::test
