#pragma once

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

// Runs the sides in turn, one round uncounted and then `rounds` counted ones, and prints the median times
// and the median, least and greatest of the ratio of ours to the yardsticks' sum, taken round by round.
// Answers whether the median ratio is at most `limit`.
bool sideBySide(const Side& ours, const std::vector<Yardstick>& yardsticks, double limit, int rounds = 7);
bool sideBySide(const Side& ours, const Side& yardstick, double limit, int rounds = 7);

} // namespace veilkeep::benchmark
