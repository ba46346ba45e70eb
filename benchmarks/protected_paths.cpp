// What it costs to ask whether an item is protected: once in a process of its own, as the worker does, and
// again and again in one process, as the list does.

#include "core/names/BaseCloakLogic.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

double timeOfOne(const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    const bool isProtected = veilkeep::BaseCloakLogic::isProtectedFileAtPath(path);
    const Microseconds time = std::chrono::steady_clock::now() - begin;
    if (isProtected)
        std::printf("unexpectedly protected: %s\n", path.c_str());
    return time.count();
}

// This program started anew for one path; it prints the time that the first question took.
double timeOfFirst(const char* program, const std::string& path) {
    const std::string command = std::string(program) + " --one '" + path + "'";
    FILE* output = ::popen(command.c_str(), "re");
    double time = 0;
    if (!output || std::fscanf(output, "%lf", &time) != 1)
        std::perror("popen");
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
    std::string home = "/srv/veilkeep-benchmark-XXXXXX";
    if (!::mkdtemp(home.data()))
        return std::perror("mkdtemp"), 1;
    ::setenv("HOME", home.c_str(), 1);
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
        ::unsetenv(variable);
    const std::string directory = home + "/Work/Letters", file = directory + "/report.pdf";
    ::mkdir((home + "/Work").c_str(), 0755);
    ::mkdir(directory.c_str(), 0755);
    std::ofstream(file) << "text";
    std::printf("%-12s %16s %16s\n", "", "first call", "each later call");
    std::printf("%-12s %13.1f us %13.2f us\n", "file", medianOfFirst(arguments[0], file), meanOfLater(file));
    std::printf("%-12s %13.1f us %13.2f us\n", "directory", medianOfFirst(arguments[0], directory),
                meanOfLater(directory));
    return std::system(("rm -rf '" + home + "'").c_str()) == 0 ? 0 : 1;
}
