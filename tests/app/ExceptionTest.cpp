#include "app/UncaughtExceptions.h"
#include "tests/app/AppWorld.h"
#include "widgets/preview/WorkQueue.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QPlainTextEdit>

#include <functional>
#include <stdexcept>
#include <string>

namespace veilkeep::test {
namespace {

struct NSAccessibilityException {};

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

QWidget* reportWindow() {
    QWidget* found = nullptr;
    (void)eventually([&] {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->findChild<QPlainTextEdit*>())
                found = widget;
        return found != nullptr;
    });
    return found;
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
    QWidget* const window = reportWindow();
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
    EXPECT_TRUE(reportWindow());
    ASSERT_EQ(reports().size(), 1U);
    EXPECT_NE(readFile(reports()[0]).find("of an image"), std::string::npos);
}

TEST(ExceptionTest, SomeAreOnlyLogged) {
    const struct {
        std::function<void()> throwing;
        std::string logged;
    } rows[] = {
        {[] { throw std::logic_error("loaded by SIMBL"); }, "Ignored exception: loaded by SIMBL"},
        {[] { throw NSAccessibilityException(); }, "Error: Ignored NSAccessibilityException"},
    };
    AppWorld world;
    ASSERT_TRUE(world.start());
    for (const auto& row : rows) {
        throwInEventLoop(row.throwing);
        EXPECT_NE(readFile(stateDirectory() + "/Veilkeep.log").find(row.logged), std::string::npos);
        EXPECT_EQ(reports().size(), 0U) << row.logged;
    }
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
