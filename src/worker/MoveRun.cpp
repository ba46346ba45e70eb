#include "worker/MoveRun.h"

#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "worker/AnswerLine.h"
#include "worker/ItemMover.h"
#include "worker/ProcessGuard.h"
#include "worker/RequestInput.h"
#include "worker/RereadNotice.h"
#include "worker/TraceCleaning.h"

#include <unistd.h>

#include <string>

namespace veilkeep {
namespace {

// The item lies elsewhere than the application believes, and only this tells it.
void leaveRecord(const std::string& currentPath, int action, const std::string& inProgressFolder) {
    const InProgressRecord record{BaseCloakLogic::constructOriginalFullFileName(currentPath), currentPath, 0,
                                  action};
    if (writeRecord(inProgressFolder, record))
        postRereadTempFiles();
    else
        logLine("Could not write an in-progress record for " + currentPath + ".");
}

// Without a folder the record goes into the one of this process' user.
bool move(const WorkerRequest& request, const std::string& path, const std::string& inProgressFolder,
          const Caller& caller) {
    const bool hides = request.operation == WorkerRequest::Operation::Hide;
    const User* const askedBy = caller.askedBy ? &*caller.askedBy : nullptr;
    const MoveAnswer answer = hides ? hideItem(path, askedBy) : unhideItem(path, askedBy);
    if (answer.error != WorkerError::Success) {
        if (request.printAnswer)
            answerError(answer.error, caller);
        return false;
    }
    const bool told = !request.printAnswer || deliver(STDOUT_FILENO, newFilenameLine(answer.newPath));
    const bool needsRecord = !told || endingSignalArrived();
    if (needsRecord && caller.mayWrite()) // without it a search for hidden items finds the item
        leaveRecord(answer.newPath, hides ? 1 : 0,
                    inProgressFolder.empty() ? OwnPlaces::current().inProgressDirectory : inProgressFolder);
    if (hides && request.removeRecents && !askedBy)
        haveTracesCleaned(path, answer.newPath);
    return true;
}

} // namespace

bool moveAndAnswer(const WorkerRequest& request, const Caller& caller) {
    if (!request.pathIsOnInput)
        return move(request, request.path, {}, caller);
    if (const auto input = RequestInput::read(STDIN_FILENO))
        return move(request, input->path, input->inProgressFolder, caller);
    if (request.printAnswer)
        answerError(WorkerError::Unknown, caller);
    return false;
}

void answerError(WorkerError error, const Caller& caller) {
    if (!deliver(STDOUT_FILENO, errorLine(error)) && caller.mayWrite())
        logLine("Nobody was there to be told of error " + std::to_string(static_cast<int>(error)) + ".");
}

} // namespace veilkeep
