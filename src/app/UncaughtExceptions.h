#pragma once

#include <exception>
#include <string>
#include <vector>

namespace veilkeep {

// What an exception that nobody caught says of itself.
struct UncaughtException {
    std::string name;              // of its type
    std::string reason;            // empty where it has none
    std::vector<void*> stack = {}; // as backtrace() gives it

    static UncaughtException from(const std::exception_ptr& exception);

    // Of the accessibility toolkit, and of code that other programs load into this one: a line in the log,
    // and nothing else.
    bool isToBeIgnored() const;
};

// From now on an exception that ends the program leaves a line in the log and a crash note behind, which the
// next start makes a problem report of, or such a report where there is no note yet. They name its type
// alone: what it says of itself may name an item.
void reportWhatEndsTheProgram();

} // namespace veilkeep
