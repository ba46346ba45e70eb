#include "worker/RestoreRun.h"

#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "core/tracking/HiddenItemScan.h"
#include "worker/ProcessGuard.h"

namespace veilkeep {
namespace {

HiddenItemScan runningScan;

// Nobody asked for the records' folder, so it is no item that was not found.
WorkerError workerErrorFromRecording(const Error& error) {
    const WorkerError known = workerErrorFromErrno(error.systemError);
    return known == WorkerError::Success || known == WorkerError::NotFound ? WorkerError::Unknown : known;
}

WorkerError workerErrorFrom(const Error& error) {
    const WorkerError known = workerErrorFromErrno(error.systemError);
    return known == WorkerError::Success ? WorkerError::Unknown : known;
}

void logTroubles(const HiddenItemScan::Summary& summary) {
    for (const Error& trouble : summary.troubles)
        logError("A directory could not be looked into", trouble);
    if (summary.unreadable > summary.troubles.size())
        logLine("Directories that could not be looked into, in all: " + std::to_string(summary.unreadable));
}

} // namespace

RestoreSummary recordHiddenItemsBelow(const std::string& directory, const std::string& inProgressFolder) {
    RestoreSummary summary;
    handleEndingSignals([](int) { runningScan.cancel(); });
    const auto scanned = runningScan.scan(directory, [&](const std::string& path) {
        const InProgressRecord record{BaseCloakLogic::constructOriginalFullFileName(path), path, 0, 1};
        if (const auto written = writeRecord(inProgressFolder, record)) {
            ++summary.found;
        } else if (summary.error == WorkerError::Success) {
            summary.error = workerErrorFromRecording(written.error());
            logError("No in-progress record could be written for " + path, written.error());
        }
    });
    if (!scanned) {
        summary.error = workerErrorFrom(scanned.error());
        return summary;
    }
    logTroubles(*scanned);
    summary.unreadable = scanned->unreadable;
    if (scanned->cancelled)
        summary.error = WorkerError::Cancelled;
    return summary;
}

} // namespace veilkeep
