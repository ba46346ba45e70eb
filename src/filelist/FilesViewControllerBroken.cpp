#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "filelist/FilesViewController.h"
#include "filelist/MainThread.h"
#include "filelist/Texts.h"

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FilesViewController)
};

} // namespace

void FilesViewController::askAboutVisible(const ListedFile& file) {
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, Texts::tr("Previously visible file is broken."),
        Texts::tr("File %1 is in broken state. It might be moved to some new place. You can specify it's new "
                  "location or just delete it from the list.")
            .arg(shownPath(file->originalPath())),
        Texts::tr("Locate File..."), Texts::tr("Remove From List"), Texts::tr("Cancel"));
    if (answer == Alerts::defaultAnswer)
        locateFile(file);
    else if (answer == Alerts::alternateAnswer)
        removeFiles({file});
}

void FilesViewController::askAboutHidden(const ListedFile& file) {
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, Texts::tr("Previously hidden file is broken."),
        Texts::tr(
            "File %1 is in broken state. It might be moved to some new place. You can specify directory "
            "where it can reside and run restoring or just delete it from the list.")
            .arg(shownPath(file->originalPath())),
        Texts::tr("Restore Directory..."), Texts::tr("Remove From List"), Texts::tr("Cancel"));
    if (answer == Alerts::defaultAnswer)
        restoreDirectoryDialog(std::string(file->originalPath()));
    else if (answer == Alerts::alternateAnswer)
        removeFiles({file});
}

void FilesViewController::locateFile(const ListedFile& file) {
    if (m_parts.pathChooser)
        openNewLocationPanelDidEnd(file, m_parts.pathChooser->chooseItem(std::string(file->originalPath())));
}

void FilesViewController::openNewLocationPanelDidEnd(const ListedFile& file,
                                                     const std::optional<std::string>& path) {
    if (!path) {
        m_brokenFiles.markBroken(file);
        saveDataToDisk();
        return;
    }
    if (!itemExistsAt(*path))
        return logLine("Failed to create file with path " + *path);
    File located = File::fileWithPath(*path);
    located.movedTo(*path); // it may be a hidden one
    removeFileFromList(file);
    if (!findFileWithPath(*path))
        m_files.append(std::move(located));
    saveDataToDisk();
    emit numberOfFilesOfCurrentGroupChanged();
}

void FilesViewController::restoreDirectoryDialog(const std::string& path) {
    if (m_parts.pathChooser)
        openRestorePanelDidEnd(m_parts.pathChooser->chooseDirectoriesToRestore(
            path.empty() ? std::string() : std::string(parentPath(path))));
}

void FilesViewController::openRestorePanelDidEnd(const std::vector<std::string>& directories) {
    for (const std::string& directory : directories)
        restoreDir(directory);
}

void FilesViewController::restoreStarted(const std::string& directory) {
    MainThread::runAndWait([&] {
        m_parts.progress.showProgressForWindow(Alert::Window::Main,
                                               Texts::tr("Restoring is in progress. Please wait..."),
                                               ProgressController::Cancelling::Offered);
        m_parts.progress.updateWithSubStage(Texts::tr("Directory: %1").arg(shownPath(directory)));
        m_restores.progressIsShown();
    });
}

void FilesViewController::restoreFinished() {
    MainThread::runAndWait([this] { m_parts.progress.hideProgress(); });
}

} // namespace veilkeep
