#include "core/log/Log.h"
#include "core/protocol/InProgressRecord.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/FilesViewController.h"
#include "filelist/MainThread.h"
#include "filelist/RecordsByItem.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int shortestCheck = 500; // milliseconds that the panel of a check stays after it

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FilesViewController)
};

} // namespace

void FilesViewController::load() {
    loadDataFromDisk();
    m_parts.cloakWorker.checkTempFiles();
}

void FilesViewController::check() {
    performSanityCheck(m_files.all());
    m_brokenFiles.searchDeeply(m_brokenFiles.brokenFiles());
}

void FilesViewController::checkBehind() {
    m_certaintyCheck.check(m_files.all());
}

void FilesViewController::lookAtUncertain(Files files) {
    std::erase_if(files, [this](const ListedFile& file) { return !m_files.contains(file); });
    m_brokenFiles.markMissing(files);
}

void FilesViewController::searchForBroken() {
    saveWhileEventsRun();
    m_brokenFiles.searchDeeply(m_brokenFiles.brokenFiles());
    emit checked();
}

bool FilesViewController::hideAllFilesOfGroup(std::int64_t groupID, bool collectErrors) {
    const bool allWell = hideFiles(getAllFilesOfGroup(groupID).value_or(Files()), collectErrors);
    m_filesController.clearSelection();
    return allWell;
}

bool FilesViewController::unhideAllFilesOfGroup(std::int64_t groupID, bool collectErrors) {
    const bool allWell = unhideFiles(getAllFilesOfGroup(groupID).value_or(Files()), collectErrors);
    m_filesController.clearSelection();
    return allWell;
}

void FilesViewController::hideAllFilesOfCurrentGroup() {
    m_parts.turns.run([this] {
        if (const Files shown = m_filesController.arrangedObjects(); !shown.empty())
            hideFiles(shown, false);
        m_filesController.clearSelection();
    });
}

void FilesViewController::unhideAllFilesOfCurrentGroup() {
    m_parts.turns.run([this] {
        if (const Files shown = m_filesController.arrangedObjects(); !shown.empty())
            unhideFiles(shown, false);
        m_filesController.clearSelection();
    });
}

bool FilesViewController::ifAllFilesAreVisible() const {
    return std::ranges::all_of(m_filesController.arrangedObjects(),
                               [](const ListedFile& file) { return file->state() == File::Visible; });
}

bool FilesViewController::ifAllFilesAreHidden() const {
    return std::ranges::all_of(m_filesController.arrangedObjects(),
                               [](const ListedFile& file) { return file->state() == File::Hidden; });
}

bool FilesViewController::isFileHidden(std::ptrdiff_t row) const {
    return row >= 0 &&
           m_filesController.arrangedObjects()[static_cast<std::size_t>(row)]->state() == File::Hidden;
}

bool FilesViewController::ifNoHiddenInArray(const Files& files) {
    return std::ranges::none_of(files, [](const ListedFile& file) { return file->state() == File::Hidden; });
}

bool FilesViewController::ifAllFilesInArrayAreVisible(const Files& files) {
    return std::ranges::none_of(files, [](const ListedFile& file) {
        return file->state() == File::Hidden || file->state() == File::Broken;
    });
}

void FilesViewController::switchOnOff(int value) {
    m_parts.turns.run([this, value] {
        if (value == 1)
            hideFiles(getAllSelectedFiles(), false);
        else if (value == 0)
            unhideFiles(getAllSelectedFiles(), false);
    });
}

void FilesViewController::revealFileInFinder(const std::string& path) {
    if (m_parts.fileViewer)
        m_parts.fileViewer->selectFile(path);
}

void FilesViewController::sortFiles(SortKey key, bool ascending) {
    m_parts.turns.run([this, key, ascending] {
        m_files.sort(fileOrder(m_files.all(), key, ascending));
        saveDataToDisk();
    });
}

void FilesViewController::checkTempFiles() {
    m_parts.turns.run([this] { m_parts.cloakWorker.checkTempFiles(); });
}

void FilesViewController::shouldCleanRecents(const QString& answer) {
    m_parts.defaults.set(defaultsKey::cleanRecentItems, answer == "Yes");
    m_parts.defaults.set(defaultsKey::recentsQuestionAnswered, true);
    if (const auto stored = m_parts.defaults.synchronize(); !stored)
        logError("The answer about recent items could not be stored", stored.error());
}

void FilesViewController::notificationPosted(const QString& name, const QString& object) {
    if (name == QLatin1String("com.ostrel.Veilkeep.rereadTempFiles"))
        checkTempFiles();
    else if (name == QLatin1String("com.ostrel.Veilkeep.ShouldCleanRecents"))
        shouldCleanRecents(object);
}

void FilesViewController::processTempFile(const PropertyDictionary& record) {
    if (const auto said = recordFromDictionary(record))
        takeIn(*said);
    else
        logError("An in-progress record says nothing", said.error());
    emit numberOfFilesOfCurrentGroupChanged();
}

bool FilesViewController::keepWhatTempFilesSaid() {
    m_knownToWorkers.reset();
    return saveDataToDisk();
}

void FilesViewController::takeIn(const InProgressRecord& said) {
    ListedFile known = findFileWithOriginalPath(said.originalPath);
    if (!known)
        known = findFileWithPath(said.currentPath);
    if (!known) {
        if (!m_knownToWorkers)
            m_knownToWorkers = std::make_unique<RecordsByItem>(m_files);
        if (const ListedFile moved = m_knownToWorkers->strayAt(said.currentPath)) {
            m_files.change(moved, [&](File& file) { file.movedTo(said.currentPath); });
            return;
        }
        m_files.append(File::fileWithPath(said.currentPath, said.originalPath, said.action));
        return;
    }
    m_files.change(known, [&](File& file) {
        AliasResolver resolver(AliasResolver::Reach::Nearby);
        file.setPath(said.currentPath);
        file.syncPathWithAlias(resolver);
    });
}

void FilesViewController::restoreDirectory() {
    m_parts.turns.run([this] { restoreDirectoryDialog({}); });
}

void FilesViewController::performSanityCheckOfAll() {
    m_parts.turns.run([this] {
        m_parts.progress.showProgressForWindow(Alert::Window::Main,
                                               Texts::tr("Searching for inconsistent files. Please wait..."),
                                               ProgressController::Cancelling::Offered);
        performSanityCheck(m_files.all());
        m_brokenFiles.searchAndWait(m_brokenFiles.brokenFiles());
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

} // namespace veilkeep
