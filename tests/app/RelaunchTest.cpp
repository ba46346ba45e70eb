#include "core/filesystem/ReadWholeFile.h"
#include "tests/app/AppWorld.h"
#include "tests/support/RunInChild.h"
#include "tests/support/RunProgram.h"
#include "tests/support/WaitUntil.h"
#include "tests/support/bus/PrivateBus.h"
#include "widgets/dialogs/AlertWindow.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <unistd.h>

#include <sstream>

namespace veilkeep::test {
namespace {

std::string logText() {
    return readFile(appScratch().path("home/.local/state/Veilkeep/Veilkeep.log"));
}

// Of the last process that wrote that it has started.
pid_t startedLast() {
    std::istringstream log(logText());
    pid_t last = 0;
    for (std::string line; std::getline(log, line);) {
        std::istringstream words(line);
        std::string time;
        if (pid_t process = 0; line.find(" started with arguments ") != std::string::npos)
            last = words >> time >> process ? process : 0;
    }
    return last;
}

struct timespec changeOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_ctim;
}

std::string statusText() {
    return runProgram({bundledProgram("veilkeepctl"), "status"}).output;
}

std::string contentOf(const std::string& path) { // also while it vanishes
    return readWholeFile(path, std::size_t{1} << 16).value_or(std::string());
}

// Whether a child has a descriptor that stands for this process.
bool isWaitedForByChild() {
    const std::string own = std::to_string(::getpid());
    std::istringstream children(contentOf("/proc/self/task/" + own + "/children"));
    for (std::string child; children >> child;)
        for (int descriptor = 3; descriptor < 16; ++descriptor)
            if (contentOf("/proc/" + child + "/fdinfo/" + std::to_string(descriptor))
                    .find("Pid:\t" + own + "\n") != std::string::npos)
                return true;
    return false;
}

// The former process is a child of the test; the new one, which nobody waits for, becomes one as well.
TEST(RelaunchTest, TheNewProcessTakesOverAndNothingIsHidden) {
    ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    const PrivateBus bus(appScratch(), PrivateBus::Place::Session);
    if (!bus.whyMissing().empty())
        GTEST_SKIP() << bus.whyMissing();
    const std::string item = appScratch().path("home/Docs/a");
    const pid_t former = startChild([&] {
        AppWorld world;
        ASSERT_TRUE(world.start());
        world.addFileToGroup("a", "AutoHide Group");
        world.groups().setAutoHide(true, "AutoHide Group");
        EXPECT_TRUE(world.isShown(item));
        EXPECT_TRUE(world.quits([&] { world.parts().relaunching.relaunch(); }));
        EXPECT_TRUE(waitUntil(isWaitedForByChild)) << "the list and the name on the bus are still taken";
    });
    EXPECT_TRUE(endedWell(former));
    const auto before = changeOf(item);
    EXPECT_TRUE(waitUntil([] { return statusText().find("owner\tapplication") != std::string::npos; }));
    const pid_t next = startedLast();
    ASSERT_NE(next, former);
    ASSERT_GT(next, 0);
    EXPECT_EQ(runProgram({bundledProgram("veilkeepctl"), "list"}).output, "visible\t" + item + "\n");
    const auto after = changeOf(item);
    EXPECT_EQ(before.tv_sec, after.tv_sec);
    EXPECT_EQ(before.tv_nsec, after.tv_nsec) << "it was moved";
    EXPECT_EQ(logText().find("found visible from a former run"), std::string::npos);
    ASSERT_EQ(::kill(next, SIGTERM), 0);
    EXPECT_TRUE(endedWell(next));
    EXPECT_FALSE(exists(item)) << "the mark was kept";
}

TEST(RelaunchTest, MessagesMakeWayAndQuestionsStay) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    const auto sheetWith = [&](const QString& title, int buttons) {
        Alert alert;
        alert.title = title;
        alert.buttons = {{"OK", 1}};
        if (buttons > 1)
            alert.buttons.push_back({"Cancel", 0});
        auto* const sheet = new AlertWindow(alert, world.window());
        sheet->setWindowModality(Qt::WindowModal);
        sheet->show();
        return sheet;
    };
    AlertWindow& message = *sheetWith("A message", 1);
    AlertWindow& question = *sheetWith("A question", 2);
    world.app().updaterWillRelaunchApplication();
    EXPECT_FALSE(message.isVisible());
    EXPECT_TRUE(question.isVisible());
    EXPECT_NE(logText().find("Dismisssed sheet A message to allow software update."), std::string::npos);
    world.parts().relaunching.relaunch();
    EXPECT_FALSE(world.parts().relaunching.isUnderWay()) << "the question would be lost";
    question.hide();
    EXPECT_FALSE(world.app().isRelaunchHeldUp());
}

} // namespace
} // namespace veilkeep::test
