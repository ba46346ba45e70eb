// The memory that Veilkeep alone takes, shared pages in proportion, with its window shown and at rest: with
// an empty list and with 100,000 items. An empty window's beside it.
#include "benchmarks/support/Report.h"
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/WindowedProgram.h"
#include "core/storage/ReplaceFile.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace veilkeep;
using benchmark::Report;
using benchmark::WindowedProgram;

constexpr int rounds = 5;

double megabytesOf(const std::string& path) {
    const WindowedProgram program(path);
    program.waitUntilPainted();
    program.waitUntilIdle();
    return static_cast<double>(program.proportionalMemory()) / 1024;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void measure(Report& report, const char* figure) {
    std::vector<double> ours, empty;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(megabytesOf(WindowedProgram::veilkeep()));
        empty.push_back(megabytesOf(WindowedProgram::emptyWindow()));
    }
    const auto [least, greatest] = std::ranges::minmax(ours);
    char detail[120];
    std::snprintf(detail, sizeof detail, "%.1f to %.1f in %d rounds, an empty window %.1f", least, greatest,
                  rounds, median(empty));
    report.tell(figure, median(ours), detail);
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const benchmark::OwnDesktop desktop;
    if (const std::string why = desktop.whyMissing(); !why.empty())
        return benchmark::Report::skipAll(why);
    Report report;
    measure(report, "an empty list");
    const benchmark::SampleTree tree{desktop.tree().path("items"), 1000, 100};
    benchmark::make(tree);
    if (!replaceFile(desktop.dataFile(), benchmark::sampleArchive(recordsOf(tree))))
        benchmark::fail(desktop.dataFile());
    measure(report, "100,000 items");
    return report.exitStatus();
}
