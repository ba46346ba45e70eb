#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/AboutWindow.h"
#include "widgets/dialogs/ReportWindow.h"

#include <QDialog>
#include <QPlainTextEdit>

#include <vector>

namespace veilkeep::test {
namespace {

TEST(AboutWindowTest, LeadsToTheGuide) {
    int guides = 0;
    AboutWindow about("1.2.3", [&] { ++guides; });
    about.show();
    auto* const window = openWindow<QDialog>();
    ASSERT_TRUE(window && showAndActivate(*window));
    realInput::click(*buttonOf(*window, "Open the Guide"));
    EXPECT_EQ(guides, 1);
}

TEST(ReportWindowTest, TellsWhatWasChosen) {
    using Action = ReportWindow::Action;
    std::vector<Action> chosen;
    ReportWindow report;
    report.show("why", "<b>text</b>", "/state/report \xff", [&](Action action) { chosen.push_back(action); });
    auto* const window = openWindow<QDialog>();
    ASSERT_TRUE(window && showAndActivate(*window));
    EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText(), "<b>text</b>");
    for (const char* const button : {"Open", "Copy"})
        realInput::click(*buttonOf(*window, button));
    realInput::key("Escape");
    EXPECT_TRUE(eventually([] { return openWindow<QDialog>() == nullptr; }));
    EXPECT_EQ(chosen, (std::vector{Action::Open, Action::Copy, Action::Close}));
}

} // namespace
} // namespace veilkeep::test
