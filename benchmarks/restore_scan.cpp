// Compares "cloakWorker -p -restore DIR" with "find DIR -name .SYS_INDEX" over 10,000 directories of 50
// files, whole process against whole process; then reports time and greatest memory over 100,000 directories
// of 10 files. The trees are made once, beside the program.

#include "benchmarks/support/SampleTree.h"
#include "benchmarks/support/SideBySide.h"
#include "core/base/PathText.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchTree.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <string>

using namespace veilkeep;
using namespace veilkeep::benchmark;

namespace {

constexpr int indexes = 50;

// One directory in so many holds a hidden item. Finished trees carry a mark beside them.
void makeTree(const SampleTree& tree) {
    const std::string mark = tree.path + ".made";
    if (::access(mark.c_str(), F_OK) == 0)
        return;
    make(tree);
    for (int number = 0; number < tree.directories; number += tree.directories / indexes) {
        const std::string index = joinPath(tree.directory(number), ".SYS_INDEX");
        makeDirectory(index);
        makeFiles(index, 1);
    }
    makeFile(mark);
}

void search(const SampleTree& tree) {
    const test::ProgramRun run =
        test::runProgram({test::bundledProgram("cloakWorker"), "-p", "-restore", tree.path});
    if (run.output != "Found: " + std::to_string(indexes) + "\nUnreadable: 0\n")
        fail("cloakWorker did not find what there is");
}

void find(const SampleTree& tree) {
    const test::ProgramRun run = test::runProgram({"/usr/bin/find", tree.path, "-name", ".SYS_INDEX"});
    if (std::count(run.output.begin(), run.output.end(), '\n') != indexes)
        fail("find did not find what there is");
}

void searchLarge(Report& report, const SampleTree& tree) {
    makeTree(tree);
    search(tree);
    const auto begin = std::chrono::steady_clock::now();
    search(tree);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    report.tell("100,000 directories of 10 files", time.count(), "the second search");
    report.tell("memory over 100,000 directories", static_cast<double>(usage.ru_maxrss) / 1024,
                "the greatest resident set");
}

std::string ownPath() {
    char path[PATH_MAX] = {};
    if (::readlink("/proc/self/exe", path, sizeof path - 1) < 0)
        fail("/proc/self/exe");
    return path;
}

} // namespace

int main() {
    const test::ScratchTree home; // where the records go
    const std::string self = ownPath();
    const SampleTree tree{self + ".tree", 10'000, 50};
    makeTree(tree);
    Report report;
    sideBySide(report, {"10,000 directories of 50 files", [&] { search(tree); }},
               {"find -name .SYS_INDEX", [&] { find(tree); }}, 15);
    searchLarge(report, {self + ".large", 100'000, 10});
    return report.exitStatus();
}
