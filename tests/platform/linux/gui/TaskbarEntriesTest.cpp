#include "platform/linux/gui/TaskbarEntries.h"

#include "tests/support/BackgroundProgram.h"
#include "tests/support/RunProgram.h"
#include "tests/support/gui/RealInput.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QWindow>

#include <unistd.h>

#include <chrono>

namespace veilkeep::test {
namespace {

constexpr const char *windowManager = "/usr/bin/openbox", *askProperty = "/usr/bin/xprop";

bool says(const QWidget& window, const char* what, const char* property = "_NET_WM_STATE") {
    const ProgramRun run = runProgram({askProperty, "-id", std::to_string(window.winId()), property});
    return run.output.find(what) != std::string::npos;
}

bool isSkipped(const QWidget& window) {
    return says(window, "_NET_WM_STATE_SKIP_TASKBAR");
}

bool isShown(QWidget& window, std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    window.show();
    return eventually(
        [&] { return window.windowHandle()->isExposed() && says(window, "Normal", "WM_STATE"); }, limit);
}

// One that comes to the screen while the manager starts may be lost to Qt.
bool isManaged() {
    QWidget probe;
    return isShown(probe, std::chrono::milliseconds(500));
}

// As the window manager has it, which writes down what holds.
TEST(TaskbarEntriesTest, AreThereAsWantedForWindowsBeforeAndAfterTheyAreShown) {
    for (const char* const program : {windowManager, askProperty})
        if (::access(program, X_OK) != 0)
            GTEST_SKIP() << "there is no " << program;
    const BackgroundProgram manager({windowManager, "--sm-disable"});
    ASSERT_TRUE(eventually(isManaged));
    bool areWanted = false;
    TaskbarEntries entries(*qApp, [&] { return areWanted; });
    QWidget window;
    window.setWindowFlag(Qt::WindowStaysOnTopHint);
    QDialog dialog;
    for (QWidget* const widget : {&window, static_cast<QWidget*>(&dialog)}) {
        SCOPED_TRACE(widget == &dialog ? "dialog" : "window");
        areWanted = false;
        ASSERT_TRUE(isShown(*widget));
        EXPECT_TRUE(isSkipped(*widget));
        EXPECT_EQ(says(*widget, "_NET_WM_STATE_ABOVE"), widget == &window) << "what else it says stays";
        areWanted = true;
        entries.update();
        EXPECT_TRUE(eventually([&] { return !isSkipped(*widget); }));
        areWanted = false;
        entries.update();
        EXPECT_TRUE(eventually([&] { return isSkipped(*widget); }));
        widget->hide();
        areWanted = true;
        ASSERT_TRUE(isShown(*widget));
        EXPECT_FALSE(isSkipped(*widget));
    }
}

} // namespace
} // namespace veilkeep::test
