#include "ctl/MoveCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/BaseCloakLogic.h"
#include "ctl/Interruption.h"
#include "ctl/ItemPath.h"
#include "format/ErrorText.h"

#include <sys/stat.h>

#include <cerrno>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

using Identity = std::pair<dev_t, ino_t>;

// Nothing where there is no item.
std::optional<Identity> identityAt(const std::string& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino);
}

// An item that is not where it was looked for is often just in the state that was asked for.
std::string reasonFor(const CloakWorkerResult& result, const std::string& path, bool hides) {
    const bool isMissing = result.errorCode() == static_cast<int>(WorkerError::NotFound);
    if (isMissing && hides && identityAt(hiddenFormOf(path)))
        return workerErrorText(WorkerError::AlreadyHidden).toStdString();
    if (isMissing && !hides && identityAt(path))
        return "Item is not hidden.";
    return workerErrorText(result.errorCode()).toStdString();
}

} // namespace

MoveCommand::MoveCommand(CloakWorkerComunicator& worker, TerminalOutput& output)
    : m_worker(worker), m_output(output) {}

ExitStatus MoveCommand::hide(const std::vector<std::string>& arguments) {
    m_operation = WorkerOperation::Hide;
    return run(arguments);
}

ExitStatus MoveCommand::unhide(const std::vector<std::string>& arguments) {
    m_operation = WorkerOperation::Unhide;
    return run(arguments);
}

ExitStatus MoveCommand::run(const std::vector<std::string>& arguments) {
    m_lastTold = std::chrono::steady_clock::now();
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (Interruption::isAsked()) {
            m_output.printMessage("interrupted; items left as they are: " +
                                  std::to_string(arguments.size() - index));
            m_someFailed = true;
            break;
        }
        moveOne(arguments[index]);
        if (std::chrono::steady_clock::now() - m_lastTold > std::chrono::seconds(1))
            tellWhatIsDone();
    }
    tellWhatIsDone();
    return m_someFailed ? ExitStatus::SomeFailed : ExitStatus::AllWell;
}

void MoveCommand::moveOne(const std::string& argument) {
    const auto path = absoluteItemPath(argument);
    if (!path) {
        const bool isMissing = path.error().systemError == ENOENT;
        fail(argument,
             (isMissing ? workerErrorText(WorkerError::NotFound) : errorReason(path.error())).toStdString());
        return;
    }
    const bool hides = m_operation == WorkerOperation::Hide;
    const std::string from = hides ? *path : hiddenFormOf(*path);
    const std::string resolved = cleanPath(withResolvedParent(from).value_or(from));
    if (hasTouchedSomethingBelow(resolved))
        tellWhatIsDone();
    const CloakWorkerResult result = moveAndLook(from);
    if (result.errorCode() != 0) {
        fail(argument, reasonFor(result, *path, hides));
        return;
    }
    m_movedTo.push_back(result.newFileName());
    const std::string_view left = parentPath(resolved);
    touch(left);
    touch(hides ? joinPath(left, hiddenDirectoryName) : parentPath(left));
}

// A worker that was killed did not say whether it had moved the item.
CloakWorkerResult MoveCommand::moveAndLook(const std::string& path) {
    const bool hides = m_operation == WorkerOperation::Hide;
    const auto before = identityAt(path);
    const CloakWorkerResult result =
        hides ? m_worker.hideFileWithPath(path) : m_worker.unhideFileWithPath(path);
    if (result.errorCode() != static_cast<int>(WorkerError::Unknown) || !before || identityAt(path))
        return result;
    const std::string moved =
        hides ? hiddenFormOf(path) : BaseCloakLogic::constructOriginalFullFileNameForUnhide(path, {});
    return identityAt(moved) == before ? CloakWorkerResult::resultWithFileName(moved) : result;
}

bool MoveCommand::hasTouchedSomethingBelow(const std::string& path) const {
    const auto below = m_touchedDirectories.lower_bound(path + "/");
    return m_touchedDirectories.contains(path) ||
           (below != m_touchedDirectories.end() && isSameOrBelow(*below, path));
}

void MoveCommand::touch(std::string_view directory) {
    m_touchedDirectories.emplace(directory);
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
