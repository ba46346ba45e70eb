// The main() of tests with real windows: a display, a home and no message bus but those that a test starts.

#include "tests/support/ScratchTree.h"
#include "tests/support/gui/NeedsDisplay.h"
#include "tests/support/gui/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <QApplication>

#include <cstdlib>
#include <string>

namespace {

using namespace veilkeep::test;

} // namespace

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const ScratchTree scratch;
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    const VirtualDisplay display;
    ::testing::AddGlobalTestEnvironment(new NeedsDisplay(display.trouble()));
    if (!display.trouble().empty())
        return RUN_ALL_TESTS();
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(count, arguments);
    QApplication::setDesktopSettingsAware(false);
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
