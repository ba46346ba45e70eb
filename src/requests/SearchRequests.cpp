#include "requests/SearchRequests.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/names/BaseCloakLogic.h"
#include "core/protocol/InProgressFolder.h"
#include "filelist/MainThread.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <QObject>

#include <cerrno>
#include <functional>
#include <optional>
#include <set>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SearchRequests)
};

} // namespace

void SearchRequests::check() {
    m_work.cloakWorker.checkTempFiles();
    FilesViewController& controller = m_work.controller;
    std::map<ListedFile, std::string> pathsBefore;
    for (const ListedFile& file : controller.files().all())
        pathsBefore.emplace(file, file->path());
    m_work.progress.showProgressForWindow(Alert::Window::Main,
                                          Texts::tr("Searching for inconsistent files. Please wait..."),
                                          ProgressController::Cancelling::Offered);
    controller.performSanityCheck(controller.files().all());
    controller.brokenFiles().searchAndWait(controller.brokenFiles().brokenFiles());
    controller.saveDataToDisk();
    const bool isCancelled = m_work.progress.isCancelled();
    m_work.progress.hideProgress();
    tellFindings(pathsBefore);
    if (isCancelled)
        tellInterruption();
}

void SearchRequests::tellFindings(const std::map<ListedFile, std::string>& pathsBefore) {
    for (const ListedFile& file : FilesViewController::Files(m_work.controller.files().all())) {
        const auto before = pathsBefore.find(file);
        if (before == pathsBefore.end())
            continue;
        if (file->state() != File::Broken) {
            if (before->second != file->path())
                m_work.caller.itemDone(before->second, std::string(file->path()));
        } else if (m_work.controller.brokenFiles().isOnAbsentVolume(file)) {
            m_work.caller.message(
                Texts::tr("%1: The volume of this item is not there.").arg(shownPath(before->second)));
        } else {
            m_work.fail(before->second, workerErrorText(WorkerError::NotFound));
        }
    }
}

void SearchRequests::tellInterruption() {
    m_work.caller.message(Texts::tr("interrupted; not everything was searched"));
    m_work.status = RequestStatus::SomeFailed;
}

void SearchRequests::locate() {
    const std::string& path = m_work.request.paths[0];
    const std::string newPath(withoutTrailingSlashes(m_work.request.paths[1]));
    const ListedFile file = m_work.listed(withoutTrailingSlashes(path));
    if (!file)
        return m_work.fail(path, Texts::tr("The item is not in the list."));
    if (!openItemAt(newPath))
        return m_work.fail(newPath, workerErrorText(workerErrorFromErrno(errno)));
    if (!isHiddenForm(newPath) && BaseCloakLogic::isProtectedFileAtPath(newPath))
        return m_work.fail(newPath, workerErrorText(WorkerError::Protected));
    m_work.controller.brokenFiles().performSanityCheckForFile(file);
    if (file->state() != File::Broken)
        return m_work.fail(path,
                           Texts::tr("The item is not missing: it is at %1.").arg(shownPath(file->path())));
    m_work.controller.openNewLocationPanelDidEnd(file, newPath);
    if (m_work.listed(newPath))
        m_work.caller.itemDone(path, newPath);
    else
        m_work.fail(newPath, Texts::tr("The item could not be added."));
}

void SearchRequests::restore() {
    for (const std::string& directory : m_work.request.paths) {
        if (m_work.caller.isCancelled())
            break;
        restoreBelow(std::string(withoutTrailingSlashes(directory)));
    }
    if (m_work.caller.isCancelled())
        tellInterruption();
    tellUnreadableRecords();
}

void SearchRequests::restoreBelow(const std::string& directory) {
    const RestoreSummary summary = searchBelow(directory);
    m_work.cloakWorker.checkTempFiles();
    tellHiddenBelow(directory);
    if (summary.error != WorkerError::Success)
        m_work.fail(directory, workerErrorText(summary.error));
    if (summary.unreadable > 0)
        m_work.fail(directory,
                    Texts::tr("directories that could not be looked into: %1").arg(summary.unreadable));
}

RestoreSummary SearchRequests::searchBelow(const std::string& directory) {
    Restores& restores = m_work.controller.restores();
    std::optional<RestoreSummary> summary;
    QObject listener;
    QObject::connect(&restores, &Restores::ended, &listener,
                     [&](const std::string& ended, const RestoreSummary& found) {
                         if (ended == directory)
                             summary = found;
                     });
    restores.start(directory);
    MainThread::runUntil([&] { return summary.has_value(); });
    return *summary;
}

// What lies inside a hidden folder comes before the folder, so that all can be brought back in this order.
void SearchRequests::tellHiddenBelow(const std::string& directory) {
    std::set<std::string, std::greater<>> paths;
    for (const ListedFile& file : m_work.controller.files().all())
        if (file->state() == File::Hidden && isSameOrBelow(file->path(), directory) &&
            itemExistsAt(std::string(file->path())))
            paths.emplace(file->path());
    for (const std::string& path : paths)
        m_work.caller.itemDone(path, path);
}

void SearchRequests::tellUnreadableRecords() {
    const InProgressFolder folder(m_work.inProgressFolder);
    const auto entries = folder.entries();
    if (!entries) {
        if (entries.error().systemError != ENOENT)
            m_work.fail(entries.error().path, errorReason(entries.error()));
        return;
    }
    for (const std::string& entry : *entries) {
        const auto dictionary = folder.read(entry);
        const auto record =
            dictionary ? recordFromDictionary(*dictionary) : Result<InProgressRecord>(dictionary.error());
        if (!record)
            m_work.fail(joinPath(folder.path(), entry), errorReason(record.error()));
    }
}

void SearchRequests::merge() {
    const std::string& source = m_work.request.paths[0];
    if (!openItemAt(source))
        return m_work.fail(source, workerErrorText(workerErrorFromErrno(errno)));
    FilesViewController& controller = m_work.controller;
    const auto merged = controller.mergeFilesInfoFile(controller.pathForDataFile(), source);
    if (!merged)
        return m_work.fail(source, errorReason(merged.error()));
    controller.performSanityCheck(controller.files().all()); // the other list may be an old one
    m_work.caller.message(Texts::tr("items taken over: %1").arg(*merged));
}

} // namespace veilkeep
