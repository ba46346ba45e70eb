#pragma once

#include "tests/support/RunProgram.h"

#include <string>
#include <vector>

namespace veilkeep::test {

// veilkeepctl with these arguments, run in the directory.
ProgramRun runCtl(std::vector<std::string> arguments, const std::string& directory);

struct CtlCall {
    std::vector<std::string> arguments;
    int status;
    std::string output;
    std::string errors; // without the first "veilkeepctl: "
};

// One after the other, each on what those before it left.
void expectCalls(const std::vector<CtlCall>& calls, const std::string& directory);

} // namespace veilkeep::test
