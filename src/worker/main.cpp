// cloakWorker: moves one item and says where it is now, or finds all hidden items below a directory. Started
// by pkexec it moves with administrator rights and does nothing else with them.
//
// Exit status 1 is success and 0 failure, as the application reads them; after a question about recent items
// a hide that went well has one of its own (RecentsAnswer).

#include "core/base/SystemCall.h"
#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/process/Arguments.h"
#include "worker/AnswerLine.h"
#include "worker/Caller.h"
#include "worker/MoveRun.h"
#include "worker/ProcessGuard.h"
#include "worker/RereadNotice.h"
#include "worker/RestoreRun.h"
#include "worker/WorkerRequest.h"

#include <unistd.h>

#include <span>

namespace {

using namespace veilkeep;

constexpr int succeeded = 1;
constexpr int failed = 0;

bool restore(const WorkerRequest& request) {
    const RestoreSummary summary =
        recordHiddenItemsBelow(request.path, OwnPlaces::current().inProgressDirectory);
    if (summary.found > 0)
        postRereadTempFiles();
    if (request.printAnswer && !deliver(STDOUT_FILENO, summaryText(summary)))
        logLine("Nobody was there to be told of the end of a search for hidden items.");
    return summary.error == WorkerError::Success;
}

// Whoever started this worker ahead of time may need it no more, or be gone.
bool isReleased() {
    char byte = 0;
    return retryOnInterrupt([&] { return ::read(STDIN_FILENO, &byte, 1); }) == 1;
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    deferEndingSignals();
    const std::span<char* const> all(argv, static_cast<std::size_t>(argc));
    const auto arguments = all.subspan(all.empty() ? 0 : 1);
    const auto request = WorkerRequest::parse(arguments);
    wipeArguments(arguments.last(arguments.empty() ? 0 : 1)); // the path
    const Caller caller = Caller::ofThisProcess();
    if (!request || !caller.mayAskFor(*request)) {
        answerError(WorkerError::Unknown, caller);
        return failed;
    }
    if (request->isHeld && !isReleased())
        return failed;
    if (request->operation == WorkerRequest::Operation::Restore)
        return restore(*request) ? succeeded : failed;
    return moveAndAnswer(*request, caller);
}
