// What it costs to ask whether an item is protected: once in a process of its own, as the worker does, and
// again and again in one process, as the list does.

#include "benchmarks/support/Report.h"
#include "benchmarks/support/SampleTree.h"
#include "core/names/BaseCloakLogic.h"
#include "tests/support/ScratchTree.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

double timeOfOne(const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    const bool isProtected = veilkeep::BaseCloakLogic::isProtectedFileAtPath(path);
    const Microseconds time = std::chrono::steady_clock::now() - begin;
    if (isProtected)
        veilkeep::benchmark::fail("unexpectedly protected: " + path);
    return time.count();
}

// This program started anew for one path; it prints the time that the first question took.
double timeOfFirst(const char* program, const std::string& path) {
    const std::string command = std::string(program) + " --one '" + path + "'";
    FILE* output = ::popen(command.c_str(), "re");
    double time = 0;
    if (!output || std::fscanf(output, "%lf", &time) != 1)
        veilkeep::benchmark::fail("the first question in a process of its own");
    if (output)
        ::pclose(output);
    return time;
}

double medianOfFirst(const char* program, const std::string& path) {
    std::vector<double> times;
    for (int round = 0; round < 51; ++round)
        times.push_back(timeOfFirst(program, path));
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double meanOfLater(const std::string& path) {
    constexpr int count = 20000;
    double sum = 0;
    timeOfOne(path);
    for (int round = 0; round < count; ++round)
        sum += timeOfOne(path);
    return sum / count;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount == 3) {
        std::printf("%f\n", timeOfOne(arguments[2]));
        return 0;
    }
    const veilkeep::test::ScratchTree tree;
    const std::string file = tree.makeFile("home/Work/Letters/report.pdf", "text");
    const std::string directory = tree.path("home/Work/Letters");
    veilkeep::benchmark::Report report;
    report.tell("first question, file", medianOfFirst(arguments[0], file), "median of 51");
    report.tell("first question, directory", medianOfFirst(arguments[0], directory), "median of 51");
    report.tell("later question, file", meanOfLater(file), "mean of 20,000");
    report.tell("later question, directory", meanOfLater(directory), "mean of 20,000");
    return report.exitStatus();
}
