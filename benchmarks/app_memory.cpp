// The memory that Veilkeep alone takes, shared pages in proportion, with its window shown and at rest: with
// an empty list and with 100,000 items. An empty window's beside it.
#include "benchmarks/support/SampleRecords.h"
#include "benchmarks/support/WindowedProgram.h"
#include "core/storage/ReplaceFile.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace veilkeep;
using benchmark::WindowedProgram;

constexpr int rounds = 5;

double megabytesOf(const std::string& path) {
    const WindowedProgram program(path);
    program.waitUntilPainted();
    program.waitUntilIdle();
    return static_cast<double>(program.proportionalMemory()) / 1024;
}

double print(const char* name, std::vector<double> values) {
    std::ranges::sort(values);
    const double median = values[values.size() / 2];
    std::printf("%-40s %8.1f MB  (%.1f to %.1f in %d rounds)\n", name, median, values.front(), values.back(),
                rounds);
    return median;
}

bool staysBelow(const char* name, double limit) {
    std::vector<double> ours, empty;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(megabytesOf(WindowedProgram::veilkeep()));
        empty.push_back(megabytesOf(WindowedProgram::emptyWindow()));
    }
    const double median = print(name, ours);
    print("an empty window", empty);
    std::printf("at most %.0f MB wanted: %s\n", limit, median <= limit ? "yes" : "NO");
    std::fflush(stdout);
    return median <= limit;
}

} // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const benchmark::OwnDesktop desktop;
    const bool isSmall = staysBelow("Veilkeep with an empty list", 40);
    const benchmark::SampleTree tree{desktop.tree().path("items"), 1000, 100};
    benchmark::make(tree);
    if (!replaceFile(desktop.dataFile(), benchmark::sampleArchive(recordsOf(tree))))
        benchmark::fail(desktop.dataFile());
    return staysBelow("Veilkeep with 100,000 items", 250) && isSmall ? 0 : 1;
}
