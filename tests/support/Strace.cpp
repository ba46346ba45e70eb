#include "tests/support/Strace.h"

#include "tests/support/RunProgram.h"

#include <map>
#include <sstream>

namespace veilkeep::test {

bool straceWorks() {
    return runProgram({"/usr/bin/strace", "-o", "/dev/null", "/bin/true"}).exitStatus == 0;
}

std::vector<std::string> traced(const std::vector<std::string>& options,
                                const std::vector<std::string>& arguments) {
    // A leak check cannot be made on a traced process.
    std::vector<std::string> command = {"/usr/bin/strace", "-E", "ASAN_OPTIONS=detect_leaks=0"};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

std::vector<TracedCall> callsOfMain(const std::string& trace) {
    std::vector<TracedCall> calls;
    std::map<std::string, int> counts;
    bool inMain = false;
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of("0123456789 ")); // the process, where strace tells it
        const std::string name = line.substr(0, line.find('('));
        if (name.size() == line.size())
            continue; // how it ended
        inMain = inMain || (line.starts_with("fcntl(0") && line.find("F_GETFD") != std::string::npos);
        const int number = ++counts[name];
        if (inMain)
            calls.push_back({name, number, line});
    }
    return calls;
}

} // namespace veilkeep::test
