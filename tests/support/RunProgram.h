#pragma once

#include <functional>
#include <string>
#include <vector>

namespace veilkeep::test {

struct ProgramRun {
    int exitStatus = -1; // -1 when it died by a signal
    int signal = 0;
    std::string output;
    std::string errors;
};

struct RunOptions {
    unsigned int asUser = 0;            // 0: as the caller
    std::string directory;              // empty: the caller's
    std::function<void()> inChild = {}; // runs in the child right before the program
};

inline constexpr unsigned int ordinaryUser = 65534;

// Runs the program at the path arguments[0] to its end, with the scratch environment of the test. An ordinary
// user can be asked for by root alone.
ProgramRun runProgram(const std::vector<std::string>& arguments, const RunOptions& options = {});

// The path of one of the bundle's programs.
std::string bundledProgram(const std::string& name);

bool isRoot();

} // namespace veilkeep::test
