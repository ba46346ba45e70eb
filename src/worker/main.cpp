// cloakWorker: moves one item and says where it is now, or finds all hidden items below a directory.
//
// Exit status 1 is success and 0 failure, as the application reads them.

#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "worker/AnswerLine.h"
#include "worker/ItemMover.h"
#include "worker/ProcessGuard.h"
#include "worker/RereadNotice.h"
#include "worker/RestoreRun.h"
#include "worker/WorkerRequest.h"

#include <unistd.h>

namespace {

using namespace veilkeep;

constexpr int succeeded = 1;
constexpr int failed = 0;

int answerError(bool print, WorkerError error) {
    if (print && !deliver(STDOUT_FILENO, errorLine(error)))
        logLine("Nobody was there to be told of error " + std::to_string(static_cast<int>(error)) + ".");
    return failed;
}

// The item lies elsewhere than the application believes, and only this tells it.
void leaveRecord(const std::string& currentPath, int action) {
    const InProgressRecord record{BaseCloakLogic::constructOriginalFullFileName(currentPath), currentPath, 0,
                                  action};
    if (writeRecord(OwnPlaces::current().inProgressDirectory, record))
        postRereadTempFiles();
    else
        logLine("Could not write an in-progress record for " + currentPath + ".");
}

int move(const WorkerRequest& request) {
    const bool hides = request.operation == WorkerRequest::Operation::Hide;
    const MoveAnswer answer = hides ? hideItem(request.path) : unhideItem(request.path);
    if (answer.error != WorkerError::Success)
        return answerError(request.printAnswer, answer.error);
    const bool told = !request.printAnswer || deliver(STDOUT_FILENO, newFilenameLine(answer.newPath));
    if (!told || endingSignalArrived())
        leaveRecord(answer.newPath, hides ? 1 : 0);
    return succeeded;
}

int restore(const WorkerRequest& request) {
    const RestoreSummary summary =
        recordHiddenItemsBelow(request.path, OwnPlaces::current().inProgressDirectory);
    if (summary.found > 0)
        postRereadTempFiles();
    if (request.printAnswer && !deliver(STDOUT_FILENO, summaryText(summary)))
        logLine("Nobody was there to be told of the end of a search for hidden items.");
    return summary.error == WorkerError::Success ? succeeded : failed;
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    deferEndingSignals();
    const std::span<char* const> all(argv, static_cast<std::size_t>(argc));
    const auto request = WorkerRequest::parse(all.subspan(all.empty() ? 0 : 1));
    if (!request)
        return answerError(true, WorkerError::Unknown);
    return request->operation == WorkerRequest::Operation::Restore ? restore(*request) : move(*request);
}
