#include "core/protocol/CloakWorkerComunicator.h"

#include "core/log/Log.h"
#include "core/process/ChildProcess.h"
#include "core/protocol/WorkerError.h"

#include <string_view>
#include <utility>

namespace veilkeep {
namespace {

// Tells the log why a run failed. False, and nothing told, where the worker came to an end of its own.
bool logTrouble(std::string_view what, const ChildProcessResult& run) {
    if (run.end == ChildProcessResult::End::Exited)
        return false;
    if (run.end == ChildProcessResult::End::Signalled)
        logLine(std::string(what) + ": the worker was ended by signal " + std::to_string(run.status));
    else
        logError(what, run.error);
    return true;
}

} // namespace

CloakWorkerComunicator::CloakWorkerComunicator(std::string workerPath, std::string inProgressFolder,
                                               Tick tick, SecurityController* rights)
    : m_workerPath(std::move(workerPath)),
      m_inProgressFolder(std::move(inProgressFolder)),
      m_tick(std::move(tick)),
      m_rights(rights) {}

void CloakWorkerComunicator::setTraceWishes(const TraceWishes& wishes) {
    m_variables.clear();
    if (wishes.cleanRecentItems)
        m_variables.push_back(std::string("VEILKEEP_CLEAN_RECENT_ITEMS=") +
                              (*wishes.cleanRecentItems ? "1" : "0"));
    if (wishes.nobodyThere)
        m_variables.emplace_back("VEILKEEP_NOBODY_THERE=1");
}

CloakWorkerResult CloakWorkerComunicator::hideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Hide, {"-p", "-i", "-hide", "-removeRecents", path});
}

CloakWorkerResult CloakWorkerComunicator::unhideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Unhide, {"-p", "-i", "-unhide", path});
}

CloakWorkerResult CloakWorkerComunicator::privilidgedHideFileWithPath(const std::string& path) {
    return runPrivilidged({"-p", "-i", "-hide", path});
}

CloakWorkerResult CloakWorkerComunicator::privilidgedUnhideFileWithPath(const std::string& path) {
    return runPrivilidged({"-p", "-i", "-unhide", path});
}

CloakWorkerResult CloakWorkerComunicator::hideFileWithPath(const std::string& path, bool andPrivilidges) {
    return andPrivilidges ? privilidgedHideFileWithPath(path) : hideFileWithPath(path);
}

CloakWorkerResult CloakWorkerComunicator::unhideFileWithPath(const std::string& path, bool andPrivilidges) {
    return andPrivilidges ? privilidgedUnhideFileWithPath(path) : unhideFileWithPath(path);
}

CloakWorkerResult CloakWorkerComunicator::run(WorkerOperation operation,
                                              const std::vector<std::string>& arguments) {
    ChildProcessOptions options;
    options.tick = &m_tick;
    options.variables = m_variables;
    options.deferEndingSignals = true; // Ctrl-C reaches the worker too, perhaps before it could see to that
    const ChildProcessResult result = runChildProcess(m_workerPath, arguments, options);
    logTrouble("Error while moving an item", result);
    return workerAnswer(operation, result);
}

CloakWorkerResult CloakWorkerComunicator::runPrivilidged(const std::vector<std::string>& arguments) {
    if (m_rights)
        return m_rights->executeCommandWithPrivilidges(m_workerPath, arguments);
    return CloakWorkerResult::resultWithErrorCode(static_cast<int>(WorkerError::NotEnoughRights));
}

void CloakWorkerComunicator::checkTempFiles() {
    (void)m_inProgressFolder.create(); // when that failed there is nothing to list either
    const Result<std::vector<std::string>> entries = m_inProgressFolder.entries();
    if (!entries)
        return logError("Could not list the in-progress folder", entries.error());
    std::vector<std::string> processed;
    for (const std::string& entry : m_delegate ? *entries : std::vector<std::string>()) {
        const Result<PropertyDictionary> record = m_inProgressFolder.read(entry);
        if (!record)
            continue;
        m_delegate->processTempFile(*record);
        processed.push_back(entry);
    }
    const bool isKept = processed.empty() || m_delegate->keepWhatTempFilesSaid();
    for (const std::string& entry : processed)
        if (const Result<void> removed = isKept ? m_inProgressFolder.remove(entry) : Result<void>(); !removed)
            logError("Could not delete an in-progress record", removed.error());
    if (const Result<void> removed = m_inProgressFolder.removeAbandonedFiles(); !removed)
        logError("Could not delete what is left of an in-progress record", removed.error());
}

RestoreSummary CloakWorkerComunicator::restoreFiles(const std::string& directory,
                                                    const std::function<bool()>& shouldEnd) {
    if (m_delegate)
        m_delegate->restoreStarted(directory);
    ChildProcessOptions options;
    options.deferEndingSignals = true; // until it has got ready to end its search on them
    options.shouldEnd = shouldEnd;
    const ChildProcessResult result = runChildProcess(m_workerPath, {"-p", "-restore", directory}, options);
    const bool failed = logTrouble("Error while restoring", result);
    if (m_delegate)
        m_delegate->restoreFinished();
    return failed ? RestoreSummary{.error = WorkerError::Unknown} : restoreSummaryFromText(result.output);
}

} // namespace veilkeep
