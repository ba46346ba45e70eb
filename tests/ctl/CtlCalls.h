#pragma once

#include "tests/support/RunProgram.h"

#include <QJsonValue>

#include <string>
#include <vector>

namespace veilkeep::test {

// What "--json" tells of a name or a path.
std::string bytesOf(const QJsonValue& value);

// veilkeepctl with these arguments, run in the directory.
ProgramRun runCtl(std::vector<std::string> arguments, const std::string& directory);

struct CtlCall {
    std::vector<std::string> arguments;
    std::string output;
    std::string errors = {}; // without the first "veilkeepctl: "
    int status = -1;         // by itself: 1 where there are errors, else 0
};

// One after the other, each on what those before it left.
void expectCalls(const std::vector<CtlCall>& calls, const std::string& directory);

} // namespace veilkeep::test
