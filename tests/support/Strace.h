#pragma once

#include <string>
#include <vector>

namespace veilkeep::test {

bool straceWorks();

// The command that runs a program under strace with these options.
std::vector<std::string> traced(const std::vector<std::string>& options,
                                const std::vector<std::string>& arguments);

// A system call of a traced program.
struct TracedCall {
    std::string name;
    int number = 0;   // of the calls of that name, from the process' start, as strace's "when=" counts
    std::string line; // of the trace

    // For strace's "-e": this call does that, in the words of its "inject=".
    std::string injecting(const std::string& what) const {
        return "inject=" + name + ":" + what + ":when=" + std::to_string(number);
    }
};

// The calls from the first one that main() of our programs makes, which looks at the standard streams. What
// comes before is the C library's and the loader's.
std::vector<TracedCall> callsOfMain(const std::string& trace);

} // namespace veilkeep::test
