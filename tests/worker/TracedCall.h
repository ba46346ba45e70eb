#pragma once

#include <string>
#include <vector>

namespace veilkeep::test {

// A system call of a traced program.
struct TracedCall {
    std::string name;
    int number = 0;   // of the calls of that name, from the process' start, as strace's "when=" counts
    std::string line; // of the trace
};

// The calls from the first one that main() of our programs makes, which looks at the standard streams. What
// comes before is the C library's and the loader's.
std::vector<TracedCall> callsOfMain(const std::string& trace);

} // namespace veilkeep::test
