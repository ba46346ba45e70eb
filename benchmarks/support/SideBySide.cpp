#include "benchmarks/support/SideBySide.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace veilkeep::benchmark {
namespace {

double timedRound(const Side& side) {
    side.prepare();
    const auto begin = std::chrono::steady_clock::now();
    side.run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

bool sideBySide(const Side& ours, const Side& yardstick, double limit, int rounds) {
    timedRound(ours);
    timedRound(yardstick);
    std::vector<double> oursTimes, yardstickTimes, ratios;
    for (int round = 0; round < rounds; ++round) {
        oursTimes.push_back(timedRound(ours));
        yardstickTimes.push_back(timedRound(yardstick));
        ratios.push_back(oursTimes.back() / yardstickTimes.back());
    }
    const auto [least, greatest] = std::ranges::minmax(ratios);
    const double ratio = median(ratios);
    std::printf("%-44s %10.2f ms\n%-44s %10.2f ms\n", ours.name.c_str(), median(oursTimes),
                yardstick.name.c_str(), median(yardstickTimes));
    std::printf("%-44s %10.3f  (%.3f to %.3f in %d rounds; at most %.2f wanted: %s)\n", "ratio", ratio, least,
                greatest, rounds, limit, ratio <= limit ? "yes" : "NO");
    return ratio <= limit;
}

} // namespace veilkeep::benchmark
