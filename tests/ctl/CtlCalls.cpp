#include "tests/ctl/CtlCalls.h"

#include <gtest/gtest.h>

namespace veilkeep::test {

std::string bytesOf(const QJsonValue& value) {
    return (value.isString() ? value.toString().toUtf8()
                             : QByteArray::fromBase64(value["base64"].toString().toLatin1()))
        .toStdString();
}

ProgramRun runCtl(std::vector<std::string> arguments, const std::string& directory) {
    arguments.insert(arguments.begin(), bundledProgram("veilkeepctl"));
    return runProgram(arguments, {0, directory, {}});
}

void expectCalls(const std::vector<CtlCall>& calls, const std::string& directory) {
    for (const CtlCall& call : calls) {
        const ProgramRun run = runCtl(call.arguments, directory);
        const std::string trace = ::testing::PrintToString(call.arguments);
        EXPECT_EQ(run.exitStatus, call.status < 0 ? int{!call.errors.empty()} : call.status) << trace;
        EXPECT_EQ(run.output, call.output) << trace;
        EXPECT_EQ(run.errors, call.errors.empty() ? "" : "veilkeepctl: " + call.errors) << trace;
    }
}

} // namespace veilkeep::test
