// What a worker that went wrong may print: read as the answer of a move (first byte: the exit status), as
// that of a move with administrator rights, whose exit status does not count, and as that of a search.
#include "core/protocol/RestoreSummary.h"
#include "core/protocol/WorkerAnswer.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace veilkeep;

void readAnswer(WorkerOperation operation, int status, const std::string& output) {
    const CloakWorkerResult answer = workerAnswer(operation, status, output);
    const bool mayHaveMoved = operation == WorkerOperation::Hide ? status != 0 : status == 1;
    const std::size_t mark = output.find("NewFilename: ");
    if (mayHaveMoved && mark != std::string::npos)
        test::require("NewFilename: " + answer.newFileName() == output.substr(mark) &&
                          answer.errorCode() == 0,
                      "all that follows the mark is the path");
    else
        test::require(answer.newFileName().empty(), "a failure has no path");
    if (mayHaveMoved || output.find("Error: ") == std::string::npos)
        test::require(answer.errorCode() == (mayHaveMoved && mark != std::string::npos ? 0 : 1),
                      "without its mark an answer is an unknown error");

    ChildProcessResult run;
    run.end = ChildProcessResult::End::Exited;
    run.status = status;
    run.output = output;
    test::require(workerAnswer(operation, run) == answer, "a whole run answers as its output does");
    run.truncated = true;
    test::require(workerAnswer(operation, run).errorCode() == 1, "cut output tells nothing");
}

void readAnswerOfAdministrator(const std::string& output) {
    const auto answer = workerAnswer(output);
    const std::size_t mark = output.find("NewFilename: ");
    const bool hasError = output.find("Error: ") != std::string::npos;
    test::require(answer.has_value() == (mark != std::string::npos || hasError), "a mark makes an answer");
    if (mark != std::string::npos)
        test::require(answer->errorCode() == 0 &&
                          "NewFilename: " + answer->newFileName() == output.substr(mark),
                      "the path comes before an error");
    else if (answer)
        test::require(answer->newFileName().empty(), "an error has no path");
}

void readSummary(const std::string& output) {
    const RestoreSummary summary = restoreSummaryFromText(output);
    test::require(restoreSummaryFromText(summaryText(summary)) == summary, "written and read it is the same");
    test::require(summary.error == WorkerError::Success || (summary.found == 0 && summary.unreadable == 0),
                  "an error counts nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    readSummary(input);
    readAnswerOfAdministrator(input);
    if (input.empty())
        return 0;
    for (const WorkerOperation operation : {WorkerOperation::Hide, WorkerOperation::Unhide})
        readAnswer(operation, data[0], input.substr(1));
    return 0;
}
