// Compares "cloakWorker -p -restore DIR" with "find DIR -name .SYS_INDEX" over 10,000 directories of 50
// files, whole process against whole process. "--large" instead reports time and greatest memory over 100,000
// directories of 10 files. The trees are made once, beside the program.

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
#include <cstring>
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

int reportLarge(const SampleTree& tree) {
    makeTree(tree);
    search(tree);
    const auto begin = std::chrono::steady_clock::now();
    search(tree);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    std::printf("%d directories, %d files: %.2f s, at most %.1f MB of memory\n", tree.directories,
                tree.directories * tree.filesInEach, time.count(),
                static_cast<double>(usage.ru_maxrss) / 1024);
    return usage.ru_maxrss < 200L * 1024 && time.count() < 60 ? 0 : 1;
}

std::string ownPath() {
    char path[PATH_MAX] = {};
    if (::readlink("/proc/self/exe", path, sizeof path - 1) < 0)
        fail("/proc/self/exe");
    return path;
}

} // namespace

int main(int argc, char** argv) {
    const test::ScratchTree home; // where the records go
    const std::string self = ownPath();
    if (argc == 2 && std::strcmp(argv[1], "--large") == 0)
        return reportLarge({self + ".large", 100'000, 10});
    const SampleTree tree{self + ".tree", 10'000, 50};
    makeTree(tree);
    const bool isFast = sideBySide({"cloakWorker -restore", [&] { search(tree); }},
                                   {"find -name .SYS_INDEX", [&] { find(tree); }}, 0.5, 15);
    return isFast ? 0 : 1;
}
