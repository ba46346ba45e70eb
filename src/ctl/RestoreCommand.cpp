#include "ctl/RestoreCommand.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/process/ChildProcess.h"
#include "core/protocol/RestoreSummary.h"
#include "ctl/Interruption.h"
#include "ctl/ItemPath.h"
#include "format/ErrorText.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <set>

namespace veilkeep {
namespace {

bool exists(const std::string& path) {
    const UniqueFd directory = openDirectoryInPieces(parentPath(path), O_PATH);
    const std::string name(lastPathComponent(path));
    struct stat status = {};
    return directory && ::fstatat(directory.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace

RestoreCommand::RestoreCommand(std::string workerPath, InProgressFolder folder, TerminalOutput& output)
    : m_workerPath(std::move(workerPath)), m_folder(std::move(folder)), m_output(output) {}

ExitStatus RestoreCommand::restore(const std::vector<std::string>& arguments) {
    bool allWell = true;
    for (const std::string& argument : arguments)
        allWell = !Interruption::isAsked() && restoreBelow(argument) && allWell;
    return m_output.flush() && allWell ? ExitStatus::AllWell : ExitStatus::SomeFailed;
}

bool RestoreCommand::restoreBelow(const std::string& argument) {
    const auto directory = absoluteItemPath(argument);
    if (!directory) {
        m_output.printError(argument, errorReason(directory.error()).toStdString());
        return false;
    }
    ChildProcessOptions options;
    options.deferEndingSignals = true; // until it has got ready to end its search on them
    options.shouldEnd = Interruption::isAsked;
    const ChildProcessResult run = runChildProcess(m_workerPath, {"-p", "-restore", *directory}, options);
    const RestoreSummary summary = restoreSummaryFromText(run.output);
    const bool listed = printRecordedBelow(*directory);
    if (summary.error != WorkerError::Success)
        m_output.printError(argument, workerErrorText(summary.error).toStdString());
    if (summary.unreadable > 0)
        m_output.printError(argument, "directories that could not be looked into: " +
                                          std::to_string(summary.unreadable));
    return listed && summary.error == WorkerError::Success && summary.unreadable == 0;
}

bool RestoreCommand::printRecordedBelow(const std::string& directory) {
    const auto entries = m_folder.entries();
    if (!entries && entries.error().systemError == ENOENT)
        return true; // no record was ever left
    if (!entries) {
        m_output.printError(entries.error().path, errorReason(entries.error()).toStdString());
        return false;
    }
    bool allRead = true;
    std::set<std::string> paths;
    for (const std::string& entry : *entries) {
        const auto dictionary = m_folder.read(entry);
        const auto record =
            dictionary ? recordFromDictionary(*dictionary) : Result<InProgressRecord>(dictionary.error());
        if (!record) {
            m_output.printError(joinPath(m_folder.path(), entry), errorReason(record.error()).toStdString());
            allRead = false;
        } else if (record->action == 1 && isSameOrBelow(record->currentPath, directory) &&
                   exists(record->currentPath)) {
            paths.insert(record->currentPath);
        }
    }
    // What lies inside a hidden folder comes before the folder, so that all can be brought back in this
    // order.
    for (auto path = paths.rbegin(); path != paths.rend(); ++path)
        m_output.printPath(*path);
    return allRead;
}

} // namespace veilkeep
