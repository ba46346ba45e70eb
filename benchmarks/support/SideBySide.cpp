#include "benchmarks/support/SideBySide.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace veilkeep::benchmark {
namespace {

double timedRound(const Side& side) {
    side.prepare();
    const auto begin = std::chrono::steady_clock::now();
    side.run();
    const auto end = std::chrono::steady_clock::now();
    side.clean();
    return std::chrono::duration<double, std::milli>(end - begin).count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void printTimes(const std::string& name, const std::vector<double>& times) {
    const auto [least, greatest] = std::ranges::minmax(times);
    std::printf("%-50s %10.2f ms  (%.2f to %.2f)\n", name.c_str(), median(times), least, greatest);
}

std::string detailOf(const std::vector<double>& times, const std::vector<double>& ratios) {
    const auto [least, greatest] = std::ranges::minmax(ratios);
    char text[120];
    std::snprintf(text, sizeof text, "%.3f to %.3f in %zu rounds, %.2f ms", least, greatest, ratios.size(),
                  median(times));
    return text;
}

} // namespace

void sideBySide(Report& report, const Side& ours, const std::vector<Yardstick>& yardsticks, int rounds) {
    std::vector<double> oursTimes, ratios;
    std::vector<std::vector<double>> yardstickTimes(yardsticks.size());
    for (int round = -1; round < rounds; ++round) {
        const double time = timedRound(ours);
        double sum = 0;
        for (std::size_t number = 0; number < yardsticks.size(); ++number) {
            const double yardstickTime = timedRound(yardsticks[number].side);
            sum += yardsticks[number].times * yardstickTime;
            if (round >= 0)
                yardstickTimes[number].push_back(yardstickTime);
        }
        if (round < 0)
            continue;
        oursTimes.push_back(time);
        ratios.push_back(time / sum);
    }
    printTimes(ours.name, oursTimes);
    for (std::size_t number = 0; number < yardsticks.size(); ++number)
        printTimes(yardsticks[number].side.name, yardstickTimes[number]);
    report.tell(ours.name, median(ratios), detailOf(oursTimes, ratios));
}

void sideBySide(Report& report, const Side& ours, const Side& yardstick, int rounds) {
    sideBySide(report, ours, std::vector<Yardstick>{{yardstick}}, rounds);
}

} // namespace veilkeep::benchmark
