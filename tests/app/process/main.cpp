// The main() of tests that start the application as a process: an ordinary user with a home and a display of
// his own, no message bus but those that a test starts.

#include "tests/app/process/ProcessWorld.h"
#include "tests/support/gui/NeedsDisplay.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <QCoreApplication>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace {

using namespace veilkeep::test;

const ScratchTree* scratchOfThisProcess = nullptr;

void becomeOrdinary() {
    if (isRoot() && (::setgroups(0, nullptr) != 0 || ::setresgid(ordinaryUser, ordinaryUser, ordinaryUser) ||
                     ::setresuid(ordinaryUser, ordinaryUser, ordinaryUser) != 0))
        ::_exit(125);
}

int runTests(int count, char** arguments) {
    becomeOrdinary();
    const QCoreApplication application(count, arguments);
    const VirtualDisplay display;
    ::testing::AddGlobalTestEnvironment(new NeedsDisplay(display.trouble()));
    return RUN_ALL_TESTS();
}

} // namespace

const ScratchTree& veilkeep::test::processScratch() {
    return *scratchOfThisProcess;
}

// The scratch tree is made and removed by whoever may do so.
int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const ScratchTree scratch;
    scratchOfThisProcess = &scratch;
    if (isRoot())
        runProgram({"/bin/chown", "-R", std::to_string(ordinaryUser), scratch.root()});
    ::setenv("LC_ALL", "C.UTF-8", 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    const pid_t child = ::fork();
    if (child == 0)
        std::exit(runTests(count, arguments));
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
