#pragma once

#include "benchmarks/support/Report.h"

#include <functional>
#include <string>
#include <vector>

namespace veilkeep::benchmark {

struct Side {
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = [] {}; // before each round, not timed
    std::function<void()> clean = [] {};   // after each round, not timed
};

// A side that counts so many times.
struct Yardstick {
    Side side;
    double times = 1.0;
};

// Runs the sides in turn, one round uncounted and then `rounds` counted ones, prints the median times, and
// reports the median, least and greatest of the ratio of ours to the yardsticks' sum, taken round by round,
// as the figure of our side's name.
void sideBySide(Report& report, const Side& ours, const std::vector<Yardstick>& yardsticks, int rounds = 7);
void sideBySide(Report& report, const Side& ours, const Side& yardstick, int rounds = 7);

} // namespace veilkeep::benchmark
