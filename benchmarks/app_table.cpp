// The real window with 100,000 items: scrolling by a screenful, a typed letter, changes under a filter, menus
// with everything selected, and the longest time that the window does not answer while all items are looked
// for. What a screen and a person leave is in the table of the limits.
#include "app/ADApp.h"
#include "app/ADAppParts.h"
#include "benchmarks/support/Report.h"
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/WindowedProgram.h"
#include "core/storage/ReplaceFile.h"
#include "tests/support/gui/RealInput.h"
#include "widgets/filetable/FilesTableModel.h"
#include "widgets/filetable/FilesTableView.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <vector>

namespace {

using namespace veilkeep;
using benchmark::Report;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

// The worst is what counts.
void tell(Report& report, const char* figure, std::vector<double> times) {
    std::ranges::sort(times);
    char detail[120];
    std::snprintf(detail, sizeof detail, "worst of %zu, median %.2f", times.size(), times[times.size() / 2]);
    report.tell(figure, times.back(), detail);
}

// Until what was asked for is painted and with the X server.
void paint() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QGuiApplication::sync();
}

template <class Child>
Child& childOf(QWidget& window) {
    auto* const child = window.findChild<Child*>();
    if (!child)
        benchmark::fail("a part of the window is missing");
    return *child;
}

void scroll(Report& report, FilesTableView& table) {
    QScrollBar& bar = *table.verticalScrollBar();
    std::vector<double> times;
    for (int page = 0; page < 300; ++page) {
        const int step = page % 3 == 2 ? bar.maximum() / 7 : bar.pageStep();
        const Clock::time_point begin = Clock::now();
        bar.setValue((bar.value() + step) % bar.maximum());
        paint();
        times.push_back(millisecondsSince(begin));
    }
    tell(report, "scroll a screenful", times);
}

// Each letter narrows the search, each backspace widens it; after a word all rows are back.
void filter(Report& report, QLineEdit& field, FilesTableView& table) {
    std::vector<double> times;
    const auto press = [&](Qt::Key key, const QString& text) {
        const Clock::time_point begin = Clock::now();
        QCoreApplication::postEvent(&field, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
        paint();
        paint(); // what was scheduled for the next turn of the event loop
        times.push_back(millisecondsSince(begin));
    };
    field.setFocus();
    for (int round = 0; round < 10; ++round) {
        for (const QChar letter : QStringLiteral("99.txt"))
            press(Qt::Key(letter.toUpper().unicode()), letter);
        for (int letter = 0; letter < 6; ++letter)
            press(Qt::Key_Backspace, {});
    }
    if (table.filesModel().rowCount() != 100'000)
        benchmark::fail("not all rows came back");
    tell(report, "type a letter", times);
}

// Records that leave a filter and come back, one by one.
void followChanges(Report& report, ADApp::Parts& parts) {
    FileList& files = parts.list.files().files();
    FilterController& filter = parts.list.files().filterController();
    filter.setSearchText(QStringLiteral("txt"));
    filter.setShowOnlyVisible(true);
    paint();
    std::vector<double> times;
    for (int change = 0; change < 1000; ++change) {
        const ListedFile file = files.all()[static_cast<std::size_t>(change % 500) * 199];
        const Clock::time_point begin = Clock::now();
        files.change(file, [&](File& record) {
            record.setState(record.state() == File::Visible ? File::Hidden : File::Visible);
        });
        (void)parts.list.files().filesController().arrangedObjects();
        times.push_back(millisecondsSince(begin));
    }
    filter.setShowAll(true);
    filter.setSearchText({});
    paint();
    tell(report, "change under a filter", times);
}

void validate(Report& report, ADApp::Parts& parts, VeilkeepWindow& window) {
    FilesController& controller = parts.list.files().filesController();
    controller.setSelectedObjects(controller.arrangedObjects());
    paint();
    std::vector<double> times;
    for (int round = 0; round < 20; ++round) {
        const Clock::time_point begin = Clock::now();
        window.validateCommands();
        times.push_back(millisecondsSince(begin));
    }
    controller.clearSelection();
    paint();
    tell(report, "menus with everything selected", times);
}

// How long a timer that is due at once waits while all items are looked for.
void answerWhileChecking(Report& report, ADApp::Parts& parts, const char* figure) {
    bool isChecked = false;
    std::vector<double> gaps;
    Clock::time_point last = Clock::now();
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] {
        gaps.push_back(millisecondsSince(last));
        last = Clock::now();
    });
    beat.start(1);
    QObject::connect(&parts.list.files(), &FilesViewController::checked, &beat, [&] { isChecked = true; });
    const Clock::time_point begin = Clock::now();
    parts.list.check();
    while (!isChecked)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    gaps.push_back(millisecondsSince(last));
    std::printf("all items are looked for in %.0f ms\n", millisecondsSince(begin));
    tell(report, figure, gaps);
}

} // namespace

int main(int count, char** arguments) {
    const benchmark::OwnDesktop desktop;
    if (const std::string why = desktop.whyMissing(); !why.empty())
        return benchmark::Report::skipAll(why);
    const benchmark::SampleTree tree{desktop.tree().path("items"), 1000, 100};
    benchmark::make(tree);
    if (!replaceFile(desktop.dataFile(), benchmark::sampleArchive(recordsOf(tree))))
        benchmark::fail(desktop.dataFile());
    QApplication::setCursorFlashTime(0);
    ADApp application(count, arguments, StartOptions());
    if (!application.start())
        benchmark::fail("the application does not start");
    ADApp::Parts& parts = application.parts();
    VeilkeepWindow& window = *parts.window.window();
    if (!test::eventually([&] { return window.isActiveWindow(); }))
        benchmark::fail("the window does not become active");
    auto& table = childOf<FilesTableView>(window);
    Report report;
    answerWhileChecking(report, parts, "answer while nothing is missing");
    scroll(report, table);
    filter(report, childOf<QLineEdit>(window), table);
    followChanges(report, parts);
    validate(report, parts, window);
    for (int directory = 0; directory < 100; ++directory)
        std::filesystem::remove_all(tree.directory(directory));
    answerWhileChecking(report, parts, "answer while 10,000 are missing");
    return report.exitStatus();
}
