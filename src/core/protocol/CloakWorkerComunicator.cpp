#include "core/protocol/CloakWorkerComunicator.h"

#include "core/log/Log.h"
#include "core/protocol/WorkerError.h"
#include "core/storage/DefaultsKeys.h"

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

std::vector<std::string> argumentsFor(WorkerOperation operation, const std::string& path) {
    if (operation == WorkerOperation::Hide)
        return {"-p", "-i", "-hide", "-removeRecents", path};
    return {"-p", "-i", "-unhide", path};
}

} // namespace

CloakWorkerComunicator::CloakWorkerComunicator(std::string workerPath, std::string inProgressFolder,
                                               Tick tick, SecurityController* rights)
    : m_workerPath(std::move(workerPath)),
      m_inProgressFolder(std::move(inProgressFolder)),
      m_tick(std::move(tick)),
      m_rights(rights) {}

TraceWishes TraceWishes::from(const UserDefaults& defaults, bool nobodyThere) {
    auto answer = defaults.boolean(defaultsKey::cleanRecentItems);
    if (!answer && defaults.boolean(defaultsKey::recentsQuestionAnswered).value_or(false))
        answer = false;
    return {answer, nobodyThere};
}

void CloakWorkerComunicator::setTraceWishes(const TraceWishes& wishes) {
    expectNothing(); // what waits was told other wishes
    m_wishes = wishes;
    m_isUnanswered = false;
    if (wishes.cleanRecentItems)
        m_answered.reset();
}

void CloakWorkerComunicator::setMayAsk(bool mayAsk, std::function<bool()> shouldEnd) {
    expectNothing();
    m_mayAsk = mayAsk;
    m_shouldEndQuestions = std::move(shouldEnd);
}

CloakWorkerResult CloakWorkerComunicator::hideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Hide, argumentsFor(WorkerOperation::Hide, path));
}

CloakWorkerResult CloakWorkerComunicator::unhideFileWithPath(const std::string& path) {
    return run(WorkerOperation::Unhide, argumentsFor(WorkerOperation::Unhide, path));
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

void CloakWorkerComunicator::expect(WorkerOperation operation, const std::string& path) {
    m_expected = argumentsFor(operation, path);
}

void CloakWorkerComunicator::expectNothing() {
    m_expected.clear();
    m_waiting = {};
}

CloakWorkerResult CloakWorkerComunicator::run(WorkerOperation operation, const Arguments& arguments) {
    const std::unique_ptr<ChildProcess> worker = workerFor(arguments);
    startExpected();
    const ChildProcessResult result = worker->untilGone();
    logTrouble("Error while moving an item", result);
    takeIn(recentsAnswer(operation, result));
    return workerAnswer(operation, result);
}

// One question is enough: the answer comes as a notification as well, but perhaps after this batch.
void CloakWorkerComunicator::takeIn(RecentsAnswer answer) {
    if (answer == RecentsAnswer::NotAsked)
        return;
    m_waiting = {}; // it would ask again
    if (answer == RecentsAnswer::Unanswered)
        m_isUnanswered = true;
    else
        m_answered = answer == RecentsAnswer::Yes;
}

bool CloakWorkerComunicator::mayAskNow() const {
    return m_mayAsk && !m_wishes.nobodyThere && !(m_shouldEndQuestions && m_shouldEndQuestions());
}

std::vector<std::string> CloakWorkerComunicator::variablesForMove(bool mayAsk) const {
    std::optional<bool> cleans = m_wishes.cleanRecentItems ? m_wishes.cleanRecentItems : m_answered;
    if (!cleans && m_isUnanswered)
        cleans = true; // as if it could not have been asked
    std::vector<std::string> variables = {std::string("VEILKEEP_MAY_ASK=") + (mayAsk ? "1" : "0")};
    if (cleans)
        variables.push_back(std::string("VEILKEEP_CLEAN_RECENT_ITEMS=") + (*cleans ? "1" : "0"));
    if (m_wishes.nobodyThere)
        variables.emplace_back("VEILKEEP_NOBODY_THERE=1");
    return variables;
}

ChildProcessOptions CloakWorkerComunicator::optionsForMove(bool mayAsk) {
    ChildProcessOptions options;
    options.tick = &m_tick;
    options.variables = variablesForMove(mayAsk);
    options.deferEndingSignals = true; // Ctrl-C reaches the worker too, perhaps before it could see to that
    if (mayAsk)
        options.shouldEnd = m_shouldEndQuestions;
    return options;
}

// The one that waits for this, or else a new one.
std::unique_ptr<ChildProcess> CloakWorkerComunicator::workerFor(const Arguments& arguments) {
    WaitingWorker waiting = std::exchange(m_waiting, {});
    const bool mayAsk = mayAskNow();
    if (waiting.process && waiting.arguments == arguments && waiting.mayAsk == mayAsk &&
        waiting.process->release())
        return std::move(waiting.process);
    return std::make_unique<ChildProcess>(m_workerPath, arguments, optionsForMove(mayAsk));
}

void CloakWorkerComunicator::startExpected() {
    if (m_expected.empty())
        return;
    m_waiting.arguments = std::exchange(m_expected, {});
    m_waiting.mayAsk = mayAskNow();
    Arguments arguments = {"-w"};
    arguments.insert(arguments.end(), m_waiting.arguments.begin(), m_waiting.arguments.end());
    ChildProcessOptions options = optionsForMove(m_waiting.mayAsk);
    options.isHeld = true;
    m_waiting.process = std::make_unique<ChildProcess>(m_workerPath, arguments, options);
}

CloakWorkerResult CloakWorkerComunicator::runPrivilidged(const Arguments& arguments) {
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
