#include "core/environment/ProcessStatus.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <unistd.h>

namespace veilkeep::test {
namespace {

TEST(ProcessStatusTest, ReadsWhatTheSystemTellsOfAProcess) {
    char name[16] = {};
    ::prctl(PR_GET_NAME, name);
    ::prctl(PR_SET_NAME, ") R 1 (x y"); // as any process may
    const auto process = ProcessStatus::of(::getpid());
    ::prctl(PR_SET_NAME, name);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->name, ") R 1 (x y");
    EXPECT_EQ(process->id, ::getpid());
    EXPECT_EQ(process->parent, ::getppid());
    EXPECT_EQ(process->user, ::geteuid());
    EXPECT_TRUE(process->program.ends_with("/core_environment_test")) << process->program;
    const auto parent = ProcessStatus::of(::getppid());
    ASSERT_TRUE(parent);
    EXPECT_LE(parent->startTime, process->startTime);
    EXPECT_FALSE(ProcessStatus::of(-1));
    for (const char* const line :
         {"", "1", "1 (a", "1 (a) S", ")1 (", "x (a) S 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19"})
        EXPECT_FALSE(processStatusFromLine(line)) << line;
}

} // namespace
} // namespace veilkeep::test
