#include "core/protocol/CloakWorkerComunicator.h"

#include "core/process/ChildProcess.h"
#include "core/storage/Log.h"

#include <cstring>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

std::string description(const Error& error) {
    const std::string reason =
        error.systemError != 0 ? std::strerror(error.systemError) : "not possible with these arguments";
    return error.operation + " " + error.path + ": " + reason;
}

// Why a run is worth a line in the log; nothing where the worker came to an end of its own.
std::optional<std::string> trouble(const ChildProcessResult& run) {
    switch (run.end) {
    case ChildProcessResult::End::Exited:
        return std::nullopt;
    case ChildProcessResult::End::Signalled:
        return "the worker was ended by signal " + std::to_string(run.status);
    case ChildProcessResult::End::NotStarted:
    case ChildProcessResult::End::Unknown:
        break;
    }
    return description(run.error);
}

} // namespace

CloakWorkerComunicator::CloakWorkerComunicator(std::string workerPath, std::string inProgressFolder,
                                               Tick tick)
    : m_workerPath(std::move(workerPath)),
      m_inProgressFolder(std::move(inProgressFolder)),
      m_tick(std::move(tick)) {}

CloakWorkerResult CloakWorkerComunicator::hideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Hide, {"-p", "-i", "-hide", "-removeRecents", path});
}

CloakWorkerResult CloakWorkerComunicator::unhideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Unhide, {"-p", "-i", "-unhide", path});
}

CloakWorkerResult CloakWorkerComunicator::run(WorkerOperation operation,
                                              const std::vector<std::string>& arguments) {
    ChildProcessOptions options;
    options.tick = &m_tick;
    options.deferEndingSignals = true; // Ctrl-C reaches the worker too, perhaps before it could see to that
    const ChildProcessResult result = runChildProcess(m_workerPath, arguments, options);
    if (const auto reason = trouble(result))
        logLine("Error while moving an item: " + *reason);
    return workerAnswer(operation, result);
}

void CloakWorkerComunicator::checkTempFiles() {
    (void)m_inProgressFolder.create(); // when that failed there is nothing to list either
    const Result<std::vector<std::string>> entries = m_inProgressFolder.entries();
    if (!entries)
        return logLine("Could not list the in-progress folder: " + description(entries.error()));
    for (const std::string& entry : *entries) {
        const Result<PropertyDictionary> record = m_inProgressFolder.read(entry);
        if (!record)
            continue;
        if (m_delegate)
            m_delegate->processTempFile(*record);
        if (const Result<void> removed = m_inProgressFolder.remove(entry); !removed)
            logLine("Could not delete an in-progress record: " + description(removed.error()));
    }
}

bool CloakWorkerComunicator::restoreFiles(const std::string& directory) {
    if (m_delegate)
        m_delegate->restoreStarted(directory);
    ChildProcessOptions options;
    options.output = ChildProcessOptions::Output::Discard;
    const ChildProcessResult result = runChildProcess(m_workerPath, {"-p", "-restore", directory}, options);
    const std::optional<std::string> reason = trouble(result);
    if (reason)
        logLine("Error while restoring: " + *reason);
    if (m_delegate)
        m_delegate->restoreFinished();
    return !reason;
}

} // namespace veilkeep
