#include "filelist/HideOperations.h"

#include "core/base/PathText.h"
#include "core/log/Log.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/SecurityController.h"
#include "core/protocol/WorkerError.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <algorithm>
#include <exception>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HideOperations)
};

bool is(std::int32_t code, WorkerError error) {
    return code == static_cast<std::int32_t>(error);
}

} // namespace

HideOperations::HideOperations(const FilesViewControllerParts& parts, FileList& files, BrokenFiles& missing,
                               ListSaver& saver)
    : m_parts(parts), m_files(files), m_missing(missing), m_saver(saver), m_mover(files, parts.cloakWorker) {}

bool HideOperations::hideFile(const ListedFile& file, bool privilidged, bool collectErrors) {
    m_missing.tryToFixFile(file);
    m_outcome = outcomeBefore(file);
    if (file->state() != File::Visible)
        return true;
    const std::int32_t code = move(WorkerOperation::Hide, file, privilidged);
    if (code == 0)
        return true;
    if (is(code, WorkerError::NotEnoughRights)) {
        if (!privilidged && mayMovePrivilidgedUnasked())
            return hideFile(file, true, collectErrors);
        if (collectErrors)
            addError(Texts::tr("Not enough rights"), *file);
        else if (mayAuthenticate()) {
            if (askToAuthenticate(
                    Texts::tr("%1 could not hide some of selected files").arg(applicationName()),
                    Texts::tr("You don't have enough permissions to hide some files, would you like to "
                              "authentificate to hide these files?")))
                return hideFile(file, true, collectErrors);
        } else
            tell(Texts::tr("%1 could not hide some items").arg(applicationName()),
                 Texts::tr("You don't have enough permissions to hide some items. You can enable privileged "
                           "files hiding in Veilkeep options."));
        return false;
    }
    m_files.change(file, [](File& record) { record.setState(File::Broken); });
    tellOrCollect(file, code, collectErrors);
    return false;
}

bool HideOperations::unhideFile(const ListedFile& file, bool privilidged, bool collectErrors) {
    m_missing.tryToFixFile(file);
    m_outcome = outcomeBefore(file);
    if (file->state() != File::Hidden)
        return true;
    if (file->stateFromPath() != File::Hidden)
        return unhideParent(file, collectErrors);
    const std::int32_t code = move(WorkerOperation::Unhide, file, privilidged);
    if (code == 0)
        return true;
    if (is(code, WorkerError::NotEnoughRights)) {
        if (collectErrors)
            addError(Texts::tr("Not enough permitions."), *file);
        else if (mayAuthenticate()) {
            if (askToAuthenticate(
                    Texts::tr("Unable to unhide some of selected files"),
                    Texts::tr("You don't have enough permissions to unhide some files, would you "
                              "like to authentificate to unhide these files?")))
                return unhideFile(file, true, collectErrors);
        } else
            tell(Texts::tr("Unable to unhide some files"),
                 Texts::tr("You don't have enough permissions to unhide some files. Please enable the 'Allow "
                           "hiding files with privileges' option in Preferences."));
        return false;
    }
    if (!is(code, WorkerError::Cancelled))
        tellOrCollect(file, code, collectErrors);
    return false;
}

// The item is hidden only because a directory above it is.
bool HideOperations::unhideParent(const ListedFile& file, bool collectErrors) {
    const QString title = Texts::tr("Parent directory is hidden.");
    const QString item = shownPath(file->originalPath());
    m_outcome.errorCode = static_cast<std::int32_t>(WorkerError::Unknown);
    m_outcome.reason = title;
    const auto hiddenDirectory = file->closestHiddenDir();
    if (!hiddenDirectory) {
        if (collectErrors)
            addError(Texts::tr("Parent directory is hidden"), *file);
        else
            tell(title,
                 Texts::tr("File '%1' is hidden because it's parent directory is hidden, but it isn't "
                           "listed in Veilkeep. Try to run restore mode for the top-most visible directory "
                           "of this file.")
                     .arg(item));
        return false;
    }
    const std::string visible = BaseCloakLogic::constructOriginalFullFileName(*hiddenDirectory);
    const QString directory = shownPath(visible);
    const ListedFile parent = m_files.withPath(*hiddenDirectory);
    if (!parent) {
        if (collectErrors)
            addError(Texts::tr("Parent directory is hidden"), *file);
        else
            tell(title,
                 Texts::tr("File '%1' is hidden because it's parent directory '%2' is hidden, but it isn't "
                           "listed in Veilkeep. Try to run restore mode for '%3'.")
                     .arg(item, directory, shownPath(parentPath(visible))));
        return false;
    }
    if (collectErrors) {
        addError(Texts::tr("Parent directory is hidden."), *file);
        return false;
    }
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::None, title,
        Texts::tr("File '%1' is hidden because it's parent directory '%2' is hidden.").arg(item, directory),
        Texts::tr("Unhide Top Level"), Texts::tr("Cancel"));
    if (answer != Alerts::defaultAnswer)
        return false;
    const MovedItem before = m_outcome;
    const bool isUnhidden = unhideFile(parent, false, collectErrors);
    m_outcome.file = file;
    if (isUnhidden)
        m_outcome = {file, 0, {}, true};
    else if (m_outcome.errorCode == 0)
        m_outcome = before;
    return isUnhidden;
}

std::int32_t HideOperations::move(WorkerOperation operation, const ListedFile& file, bool privilidged) {
    const std::int32_t code = m_mover.move(operation, file, privilidged).errorCode();
    m_outcome = {file, code, code == 0 ? QString() : workerErrorText(code), code == 0};
    return code;
}

// As long as nothing is done.
MovedItem HideOperations::outcomeBefore(const ListedFile& file) const {
    if (file->state() != File::Broken)
        return {file, 0, {}, false};
    return {file, static_cast<std::int32_t>(WorkerError::NotFound),
            m_missing.isOnAbsentVolume(file) ? Texts::tr("The volume that the item lies on is not mounted.")
                                             : workerErrorText(WorkerError::NotFound),
            false};
}

bool HideOperations::mayAuthenticate() const {
    return m_parts.security && m_parts.security->isEnabled();
}

// While nobody is there. The authority is asked once in a batch.
bool HideOperations::mayMovePrivilidgedUnasked() {
    if (!m_missing.isNobodyThere())
        return false;
    if (!m_rightsAreHeld)
        m_rightsAreHeld = mayAuthenticate() && m_parts.security->runsWithoutAsking();
    return *m_rightsAreHeld;
}

bool HideOperations::askToAuthenticate(const QString& title, const QString& message) {
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::None, title, message, Texts::tr("Authentificate"), Texts::tr("Cancel"));
    if (answer == Alerts::defaultAnswer)
        m_parts.security->authorize();
    return answer == Alerts::defaultAnswer;
}

void HideOperations::tell(const QString& title, const QString& message) {
    m_parts.alerts.ADRunCriticalAlertSheet(Alert::Window::None, title, message, Texts::tr("OK"));
}

void HideOperations::tellOrCollect(const ListedFile& file, std::int32_t code, bool collectErrors) {
    if (collectErrors)
        addError(workerErrorText(code), *file);
    else
        tell(Texts::tr("Error for file: %1").arg(shownPath(file->originalPath())), workerErrorText(code));
}

bool HideOperations::hideFiles(const Files& files, bool collectErrors) {
    return runBatch(WorkerOperation::Hide, files, collectErrors);
}

bool HideOperations::unhideFiles(const Files& files, bool collectErrors) {
    return runBatch(WorkerOperation::Unhide, files, collectErrors);
}

bool HideOperations::runBatch(WorkerOperation operation, const Files& files, bool collectErrors) {
    const bool hides = operation == WorkerOperation::Hide;
    const Files batch = files; // the list may change meanwhile
    m_lastBatch.clear();
    m_batchTroubles.clear();
    m_rightsAreHeld.reset();
    if (batch.empty()) {
        m_saver.saveDataToDisk();
        emit batchRunningChanged(false);
        return true;
    }
    if (const bool isSaved = m_saver.saveDataToDisk();
        hides && (!isSaved || m_parts.dataFile.isOfNewerVersion()))
        return refuseToHide(batch, collectErrors);
    emit batchRunningChanged(true);
    m_parts.cloakWorker.setTraceWishes(TraceWishes::from(m_parts.defaults, m_missing.isNobodyThere()));
    bool allWell = true;
    try {
        m_missing.beginBatch(batch);
        m_parts.progress.showProgressForWindow(
            Alert::Window::Main, hides ? Texts::tr("Hiding of files started. Please wait...")
                                       : Texts::tr("Unhiding of files is in progress. Please wait..."));
        allWell = moveEach(operation, batch, collectErrors);
    } catch (const std::exception& exception) {
        logLine(std::string("Error: ") + exception.what());
    }
    m_missing.endBatch();
    m_parts.cloakWorker.expectNothing();
    for (const Error& trouble : m_batchTroubles = m_mover.finish())
        logError("What was done may not survive a power cut", trouble);
    m_saver.saveDataToDisk();
    m_parts.progress.hideProgress();
    emit batchRunningChanged(false);
    return allWell;
}

bool HideOperations::moveEach(WorkerOperation operation, const Files& batch, bool collectErrors) {
    const bool hides = operation == WorkerOperation::Hide;
    bool allWell = true;
    for (std::size_t number = 0; number < batch.size(); ++number) {
        const ListedFile& file = batch[number];
        if ((!hides && m_parts.turns.isLeaving()) || m_parts.progress.isCancelled()) {
            m_lastBatch.push_back({file, static_cast<std::int32_t>(WorkerError::Cancelled),
                                   workerErrorText(WorkerError::Cancelled), false});
            allWell = false;
            continue;
        }
        m_parts.progress.updateWithSubStage(
            Texts::tr("File: %1").arg(shownPath(hides ? file->path() : file->originalPath())));
        m_parts.progress.updateWithDone(number, batch.size());
        if (number + 1 < batch.size())
            m_parts.cloakWorker.expect(operation, std::string(batch[number + 1]->path()));
        const bool isWell =
            hides ? hideFile(file, false, collectErrors) : unhideFile(file, false, collectErrors);
        m_lastBatch.push_back(m_outcome);
        allWell = allWell && isWell;
    }
    return allWell;
}

// Where the list cannot be saved nothing may vanish from sight.
bool HideOperations::refuseToHide(const Files& batch, bool collectErrors) {
    const QString reason =
        Texts::tr("The list of items could not be saved: %1").arg(m_saver.whyItCannotBeSaved());
    for (const ListedFile& file : batch) {
        m_lastBatch.push_back({file, static_cast<std::int32_t>(WorkerError::Unknown), reason, false});
        if (collectErrors)
            addError(reason, *file);
    }
    if (!collectErrors)
        tell(Texts::tr("Nothing was hidden."), reason);
    return false;
}

void HideOperations::addError(const QString& error, const File& forFile) {
    m_errors.push_back({shownPath(forFile.name()), error});
    m_outcome.reason = error;
    emit errorsChanged();
}

void HideOperations::clearErrorList() {
    m_errors.clear();
    emit errorsChanged();
}

void HideOperations::dropRepeatedErrors(std::size_t first) {
    if (first > m_errors.size())
        return;
    const std::vector<ErrorEntry> known(m_errors.begin(),
                                        m_errors.begin() + static_cast<std::ptrdiff_t>(first));
    const auto repeated = std::ranges::remove_if(
        m_errors.begin() + static_cast<std::ptrdiff_t>(first), m_errors.end(),
        [&](const ErrorEntry& error) { return std::ranges::find(known, error) != known.end(); });
    if (repeated.empty())
        return;
    m_errors.erase(repeated.begin(), repeated.end());
    emit errorsChanged();
}

int HideOperations::showErrorsMessage(const QString& title, const QString& withInfoText,
                                      const QStringList& andButtons) {
    Alert alert;
    alert.style = Alert::Style::Informational;
    alert.title = title;
    alert.message = withInfoText;
    alert.errors = m_errors;
    alert.cancellingCode = Alerts::firstButton; // the one that goes no further
    return m_parts.alerts.runAlert(std::move(alert), andButtons);
}

} // namespace veilkeep
