#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/AboutWindow.h"
#include "widgets/dialogs/ReportWindow.h"

#include <QDialog>
#include <QPlainTextEdit>

#include <vector>

namespace veilkeep::test {
namespace {

TEST(AboutWindowTest, OneThatLeadsToTheGuide) {
    int guides = 0;
    AboutWindow about("1.2.3", [&] { ++guides; });
    about.show();
    auto* const window = openWindow<QDialog>();
    about.show();
    EXPECT_EQ(openWindow<QDialog>(), window);
    ASSERT_TRUE(showAndActivate(*window));
    realInput::click(*buttonOf(*window, "Open the Guide"));
    EXPECT_EQ(guides, 1);
    realInput::key("Escape");
    EXPECT_TRUE(eventually([] { return openWindow<QDialog>() == nullptr; }));
    about.show();
    EXPECT_NE(openWindow<QDialog>(), nullptr);
}

TEST(ReportWindowTest, TellsWhatWasChosen) {
    using Action = ReportWindow::Action;
    const struct {
        const char* what;
        std::function<void(const QDialog&)> steps;
        std::vector<Action> chosen;
    } rows[] = {
        {"read and deleted",
         [](const QDialog& window) {
             for (const char* const button : {"Open", "Copy", "Delete"})
                 realInput::click(*buttonOf(window, button));
         },
         {Action::Open, Action::Copy, Action::Delete}},
        {"closed",
         [](const QDialog& window) { realInput::click(*buttonOf(window, "Close")); },
         {Action::Close}},
        {"Return", [](const QDialog&) { realInput::key("Return"); }, {Action::Close}},
        {"Escape", [](const QDialog&) { realInput::key("Escape"); }, {Action::Close}},
    };
    for (const auto& row : rows) {
        std::vector<Action> chosen;
        ReportWindow report;
        report.show("why", "<b>text</b>", "/state/report \xff", [&](Action action) {
            chosen.push_back(action);
            if (action == Action::Delete)
                report.close();
        });
        auto* const window = openWindow<QDialog>();
        ASSERT_TRUE(window && showAndActivate(*window));
        EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText(), "<b>text</b>");
        row.steps(*window);
        EXPECT_TRUE(eventually([] { return openWindow<QDialog>() == nullptr; })) << row.what;
        EXPECT_EQ(chosen, row.chosen) << row.what;
    }
}

} // namespace
} // namespace veilkeep::test
