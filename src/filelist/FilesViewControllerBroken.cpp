#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/tracking/AliasRecord.h"
#include "filelist/FilesViewController.h"
#include "filelist/MainThread.h"
#include "filelist/Texts.h"

#include <QTimer>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int defaultButton = 1;
constexpr int alternateButton = 0;
constexpr int shortestCheck = 500; // milliseconds that the panel of a check stays after it

QString text(const char* source) {
    return QCoreApplication::translate("FilesViewController", source);
}

} // namespace

void FilesViewController::start() {
    connect(&m_missing, &MissingFiles::backgroundSearchEnded, this, &FilesViewController::searchStateChanged);
    connect(&m_missing, &MissingFiles::backgroundSearchFinished, this, [this] {
        updateStates(m_files.all());
        saveDataToDisk();
        emit searchStateChanged();
    });
    loadDataFromDisk();
    m_parts.cloakWorker.setDelegate(this);
    m_parts.cloakWorker.checkTempFiles();
    performSanityCheck(m_files.all());
    searchDeeply(brokenFiles());
}

void FilesViewController::performSanityCheck(const Files& files) {
    const Files checked = files;
    for (const ListedFile& file : m_missing.missingOf(checked))
        markBroken(file);
    saveDataToDisk();
}

bool FilesViewController::performSanityCheckForFile(const ListedFile& file) {
    const bool isThere = m_missing.missingOf({file}).empty();
    if (!isThere)
        markBroken(file);
    return isThere;
}

void FilesViewController::markBroken(const ListedFile& file) {
    if (file->state() != File::Broken)
        m_files.change(file, [](File& record) { record.setState(File::Broken); });
}

// Of those whose items are there again.
void FilesViewController::updateStates(const Files& files) {
    for (const ListedFile& file : Files(files))
        if (file->state() == File::Broken && itemExistsAt(std::string(file->path())))
            m_files.change(file, [](File& record) { record.setState(stateOfPlace(record)); });
}

FilesViewController::Files FilesViewController::brokenFiles() const {
    Files broken;
    std::ranges::copy_if(m_files.all(), std::back_inserter(broken),
                         [](const ListedFile& file) { return file->state() == File::Broken; });
    return broken;
}

void FilesViewController::tryToFixFile(const ListedFile& file) {
    const bool isFound = m_missing.isThere(file, mountingFor(file)) || findEverywhere(file);
    if (!isFound)
        logLine("Failed to locate file. Wont do anything");
    const std::int32_t state = isFound ? stateOfPlace(*file) : std::int32_t{File::Broken};
    if (file->state() != state)
        m_files.change(file, [&](File& record) { record.setState(state); });
}

MissingFiles::Mounting FilesViewController::mountingFor(const ListedFile& file) {
    using Mounting = MissingFiles::Mounting;
    if (m_nobodyThere)
        return Mounting::Never;
    if (itemExistsAt(std::string(file->path())) || !file->isWhereVolumesComeAndGo())
        return Mounting::Silently;
    return mayLocate(file) ? Mounting::WithQuestions : Mounting::Never;
}

// Asked once for each volume in a batch.
bool FilesViewController::mayLocate(const ListedFile& file) {
    const auto alias = decodeAliasRecord(file->alias().value_or(std::string_view()));
    const std::string volume = alias ? alias->volume.uuid : std::string();
    if (const auto known = m_mayLocate.find(volume); known != m_mayLocate.end() && m_isBatchRunning)
        return known->second;
    const int answer = m_parts.alerts.ADRunInformationalAlertSheet(
        Alert::Window::Main,
        text("The file \"%1\" is located on a volume (network or a flash drive) and cannot be found.")
            .arg(shownPath(file->originalPath())),
        text("Veilkeep can try to find it, but this can take some time. Would you like to locate it "
             "automatically?"),
        text("Locate"), text("Ignore"));
    return m_mayLocate[volume] = answer == defaultButton;
}

// By a walk over its volume, unless the batch or nobody's being there speaks against it.
bool FilesViewController::findEverywhere(const ListedFile& file) {
    const bool isRefused = file->isWhereVolumesComeAndGo() && !mayLocateAlready(file);
    if (m_nobodyThere || isRefused || m_searchedInBatch.contains(file) || isOnAbsentVolume(file))
        return false;
    searchAndWait({file});
    return itemExistsAt(std::string(file->path()));
}

bool FilesViewController::mayLocateAlready(const ListedFile& file) const {
    const auto alias = decodeAliasRecord(file->alias().value_or(std::string_view()));
    const auto known = m_mayLocate.find(alias ? alias->volume.uuid : std::string());
    return known != m_mayLocate.end() && known->second;
}

// One search for all that a batch will miss, instead of one for each.
void FilesViewController::searchForMissing(const Files& batch) {
    if (m_nobodyThere)
        return;
    Files wanted;
    for (const ListedFile& file : batch)
        if (!itemExistsAt(std::string(file->path())) && !file->isWhereVolumesComeAndGo())
            wanted.push_back(file);
    searchAndWait(m_missing.missingOf(wanted));
    m_searchedInBatch.insert(wanted.begin(), wanted.end());
}

void FilesViewController::searchAndWait(const Files& files) {
    if (files.empty())
        return;
    m_parts.progress.updateWithSubStage(text("Searching for missing items..."));
    m_missing.searchAndWait(files, [this] {
        return m_parts.progress.isCancelled() || m_parts.turns.isLeaving() || (m_stopAsked && m_stopAsked());
    });
}

void FilesViewController::performSanityCheckOfAll() {
    m_parts.turns.run([this] {
        m_parts.progress.showProgressForWindow(Alert::Window::Main,
                                               text("Searching for inconsistent files. Please wait..."),
                                               ProgressController::Cancelling::Offered);
        performSanityCheck(m_files.all());
        searchAndWait(brokenFiles());
        updateStates(m_files.all());
        saveDataToDisk();
        bool isOver = false;
        QTimer::singleShot(shortestCheck, this, [&isOver] { isOver = true; });
        MainThread::runUntil([&] { return isOver; });
        m_parts.progress.hideProgress();
    });
}

void FilesViewController::hideOrUnhideFileInTable(const std::string& path) {
    m_parts.turns.run([this, path] {
        const ListedFile file = findFileWithPath(path);
        if (!file)
            return;
        if (file->state() == File::Broken)
            tryToFixFile(file);
        if (file->state() == File::Visible)
            hideFiles({file}, false);
        else if (file->state() == File::Hidden)
            unhideFiles({file}, false);
        else if (file->stateFromPath() == File::Visible)
            askAboutVisible(file);
        else
            askAboutHidden(file);
    });
}

void FilesViewController::askAboutVisible(const ListedFile& file) {
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, text("Previously visible file is broken."),
        text("File %1 is in broken state. It might be moved to some new place. You can specify it's new "
             "location or just delete it from the list.")
            .arg(shownPath(file->originalPath())),
        text("Locate File..."), text("Remove From List"), text("Cancel"));
    if (answer == defaultButton)
        locateFile(file);
    else if (answer == alternateButton)
        removeFiles({file});
}

void FilesViewController::askAboutHidden(const ListedFile& file) {
    const int answer = m_parts.alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, text("Previously hidden file is broken."),
        text("File %1 is in broken state. It might be moved to some new place. You can specify directory "
             "where it can reside and run restoring or just delete it from the list.")
            .arg(shownPath(file->originalPath())),
        text("Restore Directory..."), text("Remove From List"), text("Cancel"));
    if (answer == defaultButton)
        restoreDirectoryDialog(std::string(file->originalPath()));
    else if (answer == alternateButton)
        removeFiles({file});
}

void FilesViewController::locateFile(const ListedFile& file) {
    if (m_parts.pathChooser)
        openNewLocationPanelDidEnd(file, m_parts.pathChooser->chooseItem(std::string(file->originalPath())));
}

void FilesViewController::openNewLocationPanelDidEnd(const ListedFile& file,
                                                     const std::optional<std::string>& path) {
    if (!path) {
        markBroken(file);
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

void FilesViewController::restoreDir(const std::string& directory) {
    m_restores.start(directory);
}

void FilesViewController::restoreStarted(const std::string& directory) {
    MainThread::runAndWait([&] {
        m_parts.progress.showProgressForWindow(Alert::Window::Main,
                                               text("Restoring is in progress. Please wait..."),
                                               ProgressController::Cancelling::Offered);
        m_parts.progress.updateWithSubStage(text("Directory: %1").arg(shownPath(directory)));
    });
}

void FilesViewController::restoreFinished() {
    MainThread::runAndWait([this] { m_parts.progress.hideProgress(); });
}

} // namespace veilkeep
