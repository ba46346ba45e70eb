#include "worker/MoveRun.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "worker/AnswerLine.h"
#include "worker/AskedMove.h"
#include "worker/ItemDirectories.h"
#include "worker/ItemMover.h"
#include "worker/ProcessGuard.h"
#include "worker/Question.h"
#include "worker/RequestInput.h"
#include "worker/RereadNotice.h"
#include "worker/RescueMove.h"
#include "worker/TraceCleaning.h"
#include "worker/WriteLimit.h"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace veilkeep {
namespace {

constexpr int failed = 0; // as exit status

// The item lies elsewhere than the application believes, and only this tells it.
void leaveRecord(const std::string& currentPath, int action, const std::string& inProgressFolder) {
    const InProgressRecord record{BaseCloakLogic::constructOriginalFullFileName(currentPath), currentPath, 0,
                                  action};
    if (writeRecord(inProgressFolder, record))
        postRereadTempFiles();
    else
        logLine("Could not write an in-progress record for " + currentPath + ".");
}

MoveAnswer moved(const WorkerRequest& request, const std::string& path, const Caller& caller) {
    if (request.operation == WorkerRequest::Operation::Rescue)
        return rescueItem(path);
    const User* const askedBy = caller.askedBy ? &*caller.askedBy : nullptr;
    const bool hides = request.operation == WorkerRequest::Operation::Hide;
    if (mayAsk(request, caller) && (!hides || request.removeRecents))
        return hides ? hideItemAsking(path) : unhideItemAsking(path);
    return hides ? hideItem(path, askedBy) : unhideItem(path, askedBy);
}

// The item is hidden and told by now, so whoever is asked here keeps nothing waiting but this process.
RecentsAnswer cleanTraces(const WorkerRequest& request, const std::string& path,
                          const std::string& hiddenPath, const Caller& caller) {
    const bool isWanted =
        request.operation == WorkerRequest::Operation::Hide && request.removeRecents && !caller.askedBy;
    return isWanted ? haveTracesCleaned(path, hiddenPath, mayAsk(request, caller)) : RecentsAnswer::NotAsked;
}

// What opens here fails to be the item's directory only where somebody swaps it meanwhile, and then the move
// fails. Where nothing opens there must be none: it would go without a limit.
WorkerError limitAdministrator(const WorkerRequest& request, const std::string& path,
                               const std::string& inProgressFolder, const Caller& caller) {
    if (!caller.askedBy)
        return WorkerError::Success;
    const std::string_view above = parentPath(path);
    const bool hides = request.operation == WorkerRequest::Operation::Hide;
    const UniqueFd directory = openDirectory(hides ? above : parentPath(above));
    if (!directory)
        return workerErrorFromErrno(errno);
    limitWrites(directory.get(), *caller.askedBy, inProgressFolder);
    return WorkerError::Success;
}

// Without a folder the record goes into the one of this process' user.
int move(const WorkerRequest& request, const std::string& path, const std::string& inProgressFolder,
         const Caller& caller) {
    const WorkerError unlimited = limitAdministrator(request, path, inProgressFolder, caller);
    const MoveAnswer answer =
        unlimited == WorkerError::Success ? moved(request, path, caller) : MoveAnswer{unlimited, {}, {}};
    if (answer.error != WorkerError::Success) {
        if (request.printAnswer)
            answerError(answer.error, caller);
        return failed;
    }
    const bool told = !request.printAnswer || deliver(STDOUT_FILENO, newFilenameLine(answer.newPath));
    if (request.operation == WorkerRequest::Operation::Rescue)
        return static_cast<int>(RecentsAnswer::NotAsked); // whoever rescues has no list, and looks again
    const auto leaveRecordIf = [&](bool isNeeded) {
        if (isNeeded && caller.mayWrite()) // without it a search for hidden items finds the item
            leaveRecord(answer.newPath, request.operation == WorkerRequest::Operation::Hide ? 1 : 0,
                        inProgressFolder.empty() ? OwnPlaces::current().inProgressDirectory
                                                 : inProgressFolder);
        return isNeeded;
    };
    const bool hasRecord = leaveRecordIf(!told || endingSignalArrived());
    const RecentsAnswer asked = cleanTraces(request, path, answer.newPath, caller);
    // While a person was asked the reader may have gone without having read the answer.
    if (asked != RecentsAnswer::NotAsked && !hasRecord)
        leaveRecordIf(request.printAnswer && (endingSignalArrived() || readerIsGone()));
    return static_cast<int>(asked);
}

} // namespace

int moveAndAnswer(const WorkerRequest& request, const Caller& caller) {
    if (!request.pathIsOnInput)
        return move(request, request.path, {}, caller);
    if (const auto input = RequestInput::read(STDIN_FILENO))
        return move(request, input->path, input->inProgressFolder, caller);
    if (request.printAnswer)
        answerError(WorkerError::Unknown, caller);
    return failed;
}

void answerError(WorkerError error, const Caller& caller) {
    if (!deliver(STDOUT_FILENO, errorLine(error)) && caller.mayWrite())
        logLine("Nobody was there to be told of error " + std::to_string(static_cast<int>(error)) + ".");
}

} // namespace veilkeep
