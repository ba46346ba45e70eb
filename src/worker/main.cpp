// cloakWorker: moves one item and says where it is now, or finds all hidden items below a directory. Started
// by pkexec it moves with administrator rights and does nothing else with them.
//
// Exit status 1 is success and 0 failure, as the application reads them.

#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "worker/AdministratorRights.h"
#include "worker/AnswerLine.h"
#include "worker/ItemMover.h"
#include "worker/ProcessGuard.h"
#include "worker/RequestInput.h"
#include "worker/RereadNotice.h"
#include "worker/RestoreRun.h"
#include "worker/TraceCleaning.h"
#include "worker/WorkerRequest.h"

#include <unistd.h>

#include <optional>
#include <span>
#include <string>
#include <utility>

namespace {

using namespace veilkeep;

constexpr int succeeded = 1;
constexpr int failed = 0;

// On whose behalf a run is made, and where its records go.
struct Caller {
    bool hasRights = hasAdministratorRights();
    std::optional<User> askedBy = hasRights ? userOfAdministratorRights() : std::nullopt;
    std::string inProgressFolder; // empty until it is known
};

// Administrator rights are for one path on standard input, and that is for nobody else who is root.
bool isAllowed(const WorkerRequest& request, const Caller& caller) {
    if (caller.hasRights)
        return caller.askedBy && request.pathIsOnInput;
    return !request.pathIsOnInput || ::geteuid() != 0;
}

// Whatever is written beside the move itself is written with the asking user's own rights.
bool mayWrite(const Caller& caller) {
    return !caller.hasRights || (caller.askedBy && giveUpAdministratorRights(*caller.askedBy));
}

int answerError(bool print, WorkerError error, const Caller& caller) {
    if (print && !deliver(STDOUT_FILENO, errorLine(error)) && mayWrite(caller))
        logLine("Nobody was there to be told of error " + std::to_string(static_cast<int>(error)) + ".");
    return failed;
}

// The item lies elsewhere than the application believes, and only this tells it.
void leaveRecord(const std::string& currentPath, int action, const Caller& caller) {
    if (!mayWrite(caller))
        return; // a search for hidden items finds it
    const InProgressRecord record{BaseCloakLogic::constructOriginalFullFileName(currentPath), currentPath, 0,
                                  action};
    if (writeRecord(caller.inProgressFolder, record))
        postRereadTempFiles();
    else
        logLine("Could not write an in-progress record for " + currentPath + ".");
}

int move(const WorkerRequest& request, const std::string& path, Caller caller) {
    const bool hides = request.operation == WorkerRequest::Operation::Hide;
    const User* const askedBy = caller.askedBy ? &*caller.askedBy : nullptr;
    const MoveAnswer answer = hides ? hideItem(path, askedBy) : unhideItem(path, askedBy);
    if (answer.error != WorkerError::Success)
        return answerError(request.printAnswer, answer.error, caller);
    const bool told = !request.printAnswer || deliver(STDOUT_FILENO, newFilenameLine(answer.newPath));
    if (!told || endingSignalArrived()) {
        if (caller.inProgressFolder.empty())
            caller.inProgressFolder = OwnPlaces::current().inProgressDirectory;
        leaveRecord(answer.newPath, hides ? 1 : 0, caller);
    }
    if (hides && request.removeRecents && !askedBy)
        haveTracesCleaned(path, answer.newPath);
    return succeeded;
}

int moveWhatIsOnInput(const WorkerRequest& request, Caller caller) {
    const auto input = RequestInput::read(STDIN_FILENO);
    if (!input)
        return answerError(request.printAnswer, WorkerError::Unknown, caller);
    caller.inProgressFolder = input->inProgressFolder;
    return move(request, input->path, std::move(caller));
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
    const Caller caller;
    if (!request || !isAllowed(*request, caller))
        return answerError(true, WorkerError::Unknown, caller);
    if (request->operation == WorkerRequest::Operation::Restore)
        return restore(*request);
    return request->pathIsOnInput ? moveWhatIsOnInput(*request, caller)
                                  : move(*request, request->path, caller);
}
