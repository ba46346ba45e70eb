#pragma once

#include <functional>
#include <string>

namespace veilkeep::benchmark {

struct Side {
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = [] {}; // before each round, not timed
};

// Runs both sides in turn, one round uncounted and then `rounds` counted ones, and prints the median times
// and the median, least and greatest of the ratio ours/yardstick taken round by round. Answers whether the
// median ratio is at most `limit`.
bool sideBySide(const Side& ours, const Side& yardstick, double limit, int rounds = 7);

} // namespace veilkeep::benchmark
