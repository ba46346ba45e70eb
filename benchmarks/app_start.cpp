// From starting Veilkeep with 100,000 items in its list to its painted window, against twice the start of an
// empty window and loading the list; then with 10,000 missing items on a disk with 500,000 entries against
// none missing.
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/SideBySide.h"
#include "benchmarks/support/StoredList.h"
#include "benchmarks/support/WindowedProgram.h"
#include "core/storage/ReplaceFile.h"
#include "tests/support/LoopVolume.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>

namespace {

using namespace veilkeep;
using benchmark::OwnDesktop;
using benchmark::Report;
using benchmark::SampleTree;
using benchmark::Side;
using benchmark::WindowedProgram;

void store(const OwnDesktop& desktop, const std::vector<PropertyDictionary>& records) {
    if (!replaceFile(desktop.dataFile(), benchmark::sampleArchive(records)))
        benchmark::fail(desktop.dataFile());
}

// The list's load in memory that was never touched, as a start finds it.
class FreshLoad {
public:
    void run(const std::string& dataFile) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            benchmark::fail(dataFile);
        m_child = ::fork();
        if (m_child == 0) {
            benchmark::StoredList list(dataFile);
            list.controller.loadDataFromDisk();
            const char isWhole = list.controller.files().size() == 100'000;
            ::_exit(::write(ends[1], &isWhole, 1) == 1 ? 0 : 1);
        }
        ::close(ends[1]);
        char isWhole = 0;
        if (::read(ends[0], &isWhole, 1) != 1 || !isWhole)
            benchmark::fail(dataFile);
        ::close(ends[0]);
    }

    void end() const { ::waitpid(m_child, nullptr, 0); }

private:
    pid_t m_child = -1;
};

Side startOf(const std::string& program, const std::string& name) {
    const auto running = std::make_shared<std::optional<WindowedProgram>>();
    return {name,
            [=] {
                running->emplace(program);
                (*running)->waitUntilPainted();
            },
            [] {}, [=] { running->reset(); }};
}

void startWithManyItems(Report& report, const OwnDesktop& desktop) {
    const SampleTree tree{desktop.tree().path("items"), 1000, 100};
    benchmark::make(tree);
    store(desktop, recordsOf(tree));
    FreshLoad fresh;
    const Side load = {"load the list of 100,000 items", [&] { fresh.run(desktop.dataFile()); }, [] {},
                       [&] { fresh.end(); }};
    const Side empty = startOf(WindowedProgram::emptyWindow(), "an empty window, until it is painted");
    benchmark::sideBySide(report, startOf(WindowedProgram::veilkeep(), "start with 100,000 items"),
                          {{empty, 2.0}, {load, 1.0}});
}

// One list of items that are there, and another, on a disk that is searched for them, of such as are gone.
void startWithMissingItems(Report& report, const OwnDesktop& desktop) {
    const std::string figure = "start with 10,000 missing items";
    const test::LoopVolume volume(desktop.tree(), "ext4", {.formatOptions = "-N 700000", .megabytes = 1024});
    if (!volume.whyMissing().empty()) {
        report.skip(figure, volume.whyMissing());
        return;
    }
    const SampleTree rest{volume.path("rest"), 5000, 100};
    const SampleTree there{volume.path("there"), 100, 100}, gone{volume.path("gone"), 100, 100};
    for (const SampleTree& tree : {rest, there, gone})
        benchmark::make(tree);
    const auto records = recordsOf(there), missing = recordsOf(gone);
    std::filesystem::remove_all(gone.path);
    Side ours = startOf(WindowedProgram::veilkeep(), figure),
         yardstick = startOf(WindowedProgram::veilkeep(), "10,000 items that are there");
    ours.prepare = [&] { store(desktop, missing); };
    yardstick.prepare = [&] { store(desktop, records); };
    benchmark::sideBySide(report, ours, yardstick, 15);
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const OwnDesktop desktop;
    if (const std::string why = desktop.whyMissing(); !why.empty())
        return benchmark::Report::skipAll(why);
    Report report;
    startWithManyItems(report, desktop);
    startWithMissingItems(report, desktop);
    return report.exitStatus();
}
