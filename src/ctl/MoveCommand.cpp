#include "ctl/MoveCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/names/BaseCloakLogic.h"
#include "ctl/Interruption.h"
#include "ctl/ItemPath.h"
#include "format/ErrorText.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

bool exists(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0;
}

// An item that is not where it was looked for is often just in the state that was asked for.
std::string reasonFor(const CloakWorkerResult& result, const std::string& path, bool hides) {
    const bool isMissing = result.errorCode() == static_cast<int>(WorkerError::NotFound);
    if (isMissing && hides && exists(hiddenFormOf(path)))
        return workerErrorText(WorkerError::AlreadyHidden).toStdString();
    if (isMissing && !hides && exists(path))
        return "Item is not hidden.";
    return workerErrorText(result.errorCode()).toStdString();
}

} // namespace

MoveCommand::MoveCommand(CloakWorkerComunicator& worker, TerminalOutput& output)
    : m_worker(worker), m_output(output) {}

ExitStatus MoveCommand::hide(const std::vector<std::string>& arguments) {
    return run(arguments, &MoveCommand::hideOne);
}

ExitStatus MoveCommand::unhide(const std::vector<std::string>& arguments) {
    return run(arguments, &MoveCommand::unhideOne);
}

ExitStatus MoveCommand::run(const std::vector<std::string>& arguments, Move move) {
    m_lastTold = std::chrono::steady_clock::now();
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (Interruption::isAsked()) {
            m_output.printMessage("interrupted; items left as they are: " +
                                  std::to_string(arguments.size() - index));
            m_someFailed = true;
            break;
        }
        moveOne(arguments[index], move);
        if (std::chrono::steady_clock::now() - m_lastTold > std::chrono::seconds(1))
            tellWhatIsDone();
    }
    tellWhatIsDone();
    return m_someFailed ? ExitStatus::SomeFailed : ExitStatus::AllWell;
}

void MoveCommand::moveOne(const std::string& argument, Move move) {
    const auto path = absoluteItemPath(argument);
    if (!path) {
        const bool isMissing = path.error().systemError == ENOENT;
        fail(argument,
             (isMissing ? workerErrorText(WorkerError::NotFound) : errorReason(path.error())).toStdString());
        return;
    }
    const CloakWorkerResult result = (this->*move)(*path);
    if (result.errorCode() != 0) {
        fail(argument, reasonFor(result, *path, move == &MoveCommand::hideOne));
        return;
    }
    m_movedTo.push_back(result.newFileName());
    for (const std::string_view end : {std::string_view(*path), std::string_view(result.newFileName())}) {
        const std::string_view directory = parentPath(end);
        m_touchedDirectories.emplace(directory);
        if (lastPathComponent(directory) == BaseCloakLogic::hiddenDirectoryName)
            m_touchedDirectories.emplace(parentPath(directory));
    }
}

CloakWorkerResult MoveCommand::hideOne(const std::string& path) {
    return m_worker.hideFileWithPath(path);
}

CloakWorkerResult MoveCommand::unhideOne(const std::string& path) {
    return m_worker.unhideFileWithPath(hiddenFormOf(path));
}

void MoveCommand::fail(std::string_view argument, std::string_view reason) {
    m_output.printError(argument, reason);
    m_someFailed = true;
}

void MoveCommand::tellWhatIsDone() {
    for (const std::string& directory : std::exchange(m_touchedDirectories, {})) {
        const auto synced = syncDirectory(directory);
        const bool isGone = !synced && synced.error().systemError == ENOENT; // ".SYS_INDEX" that emptied
        if (!synced && !isGone)
            fail(directory, "what was done here may not survive a power cut: " +
                                errorReason(synced.error()).toStdString());
    }
    for (const std::string& path : std::exchange(m_movedTo, {}))
        m_output.printPath(path);
    if (!m_output.flush())
        m_someFailed = true;
    m_lastTold = std::chrono::steady_clock::now();
}

} // namespace veilkeep
