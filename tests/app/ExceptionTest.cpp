#include "app/UncaughtExceptions.h"
#include "tests/app/AppWorld.h"
#include "widgets/preview/WorkQueue.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>

#include <functional>
#include <stdexcept>
#include <string>

namespace veilkeep::test {
namespace {

std::string stateDirectory() {
    return appScratch().path("home/.local/state/Veilkeep");
}

std::vector<std::string> reports() {
    std::vector<std::string> paths;
    for (const std::string& name : namesIn(stateDirectory()))
        if (name.starts_with("Problem Report "))
            paths.push_back(stateDirectory() + "/" + name);
    return paths;
}

// As a slot of the program's that throws while the event loop turns.
void throwInEventLoop(const std::function<void()>& throwing) {
    QMetaObject::invokeMethod(qApp, throwing, Qt::QueuedConnection);
    settle();
}

TEST(ExceptionTest, IsReportedAndTheApplicationGoesOn) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    world.addFile("secret-name.txt");
    throwInEventLoop([] { throw std::runtime_error("about secret-name.txt"); });
    QWidget* const window = world.dialog();
    ASSERT_TRUE(window);
    const auto written = reports();
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(modeOf(written[0]), 0600U);
    const std::string text = readFile(written[0]);
    EXPECT_NE(text.find("std::runtime_error"), std::string::npos) << text;
    EXPECT_EQ(text.find("secret-name"), std::string::npos) << text;
    EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText().toStdString(), text);
    ASSERT_TRUE(world.clickButton(*window, "Delete"));
    EXPECT_TRUE(eventually([] { return reports().empty(); }));
    const std::string other = world.addFile("other.txt");
    world.files().hideOrUnhideFileInTable(other);
    world.waitForBatch();
    EXPECT_TRUE(world.isHiddenOnDisk(other));
}

TEST(ExceptionTest, IsHandedOverByAnotherThread) {
    AppWorld world;
    ASSERT_TRUE(world.start());
    WorkQueue queue(1);
    queue.add({.run = [](const WorkStop&) { throw std::runtime_error("of an image"); }});
    EXPECT_TRUE(world.dialog());
    ASSERT_EQ(reports().size(), 1U);
    EXPECT_NE(readFile(reports()[0]).find("of an image"), std::string::npos);
}

// While it starts, and after its parts have gone, there is nothing to offer a report with.
TEST(ExceptionTest, ComesBeforeTheListIsOwned) {
    AppWorld world;
    throwInEventLoop([] { throw std::runtime_error("early"); });
    EXPECT_EQ(reports().size(), 0U);
    EXPECT_NE(readFile(stateDirectory() + "/Veilkeep.log").find("early"), std::string::npos);
    EXPECT_TRUE(world.start());
}

} // namespace
} // namespace veilkeep::test
