#include "filelist/FilesViewController.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileStamp.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/storage/DefaultsKeys.h"
#include "filelist/AddBatches.h"
#include "filelist/LoadingTrouble.h"
#include "filelist/MainThread.h"
#include "filelist/RecordsByItem.h"
#include "filelist/Texts.h"
#include "format/ErrorText.h"

#include <QScopeGuard>

#include <algorithm>
#include <cerrno>
#include <future>
#include <system_error>
#include <utility>

namespace veilkeep {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FilesViewController)
};

bool isSameFile(const std::string& left, const std::string& right) {
    const auto leftStamp = fileStamp(left);
    const auto rightStamp = fileStamp(right);
    return left == right || (leftStamp && rightStamp && *leftStamp && *leftStamp == *rightStamp);
}

// What the target does not hold yet, by original path, goes to its end and into no group.
std::size_t mergeInto(FileList& target, std::vector<File> source) {
    const std::size_t before = target.size();
    for (File& file : source) {
        if (target.withOriginalPath(file.originalPath()))
            continue;
        file.setGroupID(CurrentGroup::allFiles);
        target.append(std::move(file));
    }
    return target.size() - before;
}

} // namespace

FilesViewController::FilesViewController(const FilesViewControllerParts& parts)
    : m_parts(parts), m_addBatches(makeAddBatches()) {
    m_parts.cloakWorker.setDelegate(this);
    connect(&m_filterController, &FilterController::filterPredicateChanged, this,
            [this] { m_filesController.setFilterPredicate(m_filterController.filterPredicate()); });
    if (m_parts.notifications)
        connect(m_parts.notifications, &DistributedNotifications::posted, this,
                &FilesViewController::notificationPosted);
    connect(&m_certaintyCheck, &CertaintyCheck::uncertainFound, this,
            [this](const Files& files) { m_parts.turns.run([this, files] { lookAtUncertain(files); }); });
    connect(&m_certaintyCheck, &CertaintyCheck::finished, this,
            [this] { m_parts.turns.run([this] { searchForBroken(); }); });
    connect(&m_restores, &Restores::ended, this, &FilesViewController::checkTempFiles);
}

// The event loop turns while threads come to their ends, so all else has to be there still.
FilesViewController::~FilesViewController() {
    const bool wasNobodyThere = m_parts.alerts.isNobodyThere();
    if (isAdding())
        m_parts.alerts.setNobodyThere(true); // the batch may wait for an answer
    m_restores.end();
    m_addBatches.reset();
    m_parts.alerts.setNobodyThere(wasNobodyThere);
    m_parts.cloakWorker.setDelegate(nullptr);
}

std::string FilesViewController::pathForDataFile() const {
    const std::string& path = m_parts.dataFile.path();
    if (const auto made = makeDirectories(directoryOf(path), 0700); !made)
        logError("The folder of the list could not be made", made.error());
    return path;
}

std::optional<std::vector<File>> FilesViewController::readFilesInfoFileAtPath(const std::string& path) const {
    auto files = FilesInfoFile(path).read();
    return files ? std::optional(std::move(*files)) : std::nullopt;
}

bool FilesViewController::saveFilesArrayToDisk(const Files& files, const std::string& atPath) {
    FilesInfoFile other(atPath);
    const auto saved =
        isSameFile(atPath, m_parts.dataFile.path()) ? m_parts.dataFile.save(files) : other.save(files);
    if (!saved)
        logError("Failed to save files info to file " + atPath, saved.error());
    return saved.has_value();
}

bool FilesViewController::isSaved() {
    FilesInfoFile& file = m_parts.dataFile;
    return m_savedRevision == m_files.revision() && (file.isOfNewerVersion() || file.isAsLeft());
}

bool FilesViewController::saveDataToDisk() {
    std::unique_lock saving(m_saving);
    if (isSaved())
        return true;
    const auto saved = m_parts.dataFile.save(m_files.all());
    saving.unlock(); // who is told may save again
    return noteSave(saved, m_files.revision());
}

bool FilesViewController::saveWhileEventsRun() {
    if (isSaved())
        return true;
    const std::uint64_t revision = m_files.revision();
    bool isOver = false;
    std::future<Result<SafeFile::Saved>> save;
    try {
        save = std::async(std::launch::async, [this, &isOver] {
            const auto atTheEnd = qScopeGuard([&] { MainThread::post(this, [&isOver] { isOver = true; }); });
            const std::lock_guard saving(m_saving); // events may ask for a save as well
            return m_parts.dataFile.save(m_files.all());
        });
    } catch (const std::system_error&) { // no thread is to be had
        return saveDataToDisk();
    }
    MainThread::runUntil([&] { return isOver; });
    return noteSave(save.get(), revision);
}

bool FilesViewController::noteSave(const Result<SafeFile::Saved>& saved, std::uint64_t revision) {
    if (saved) {
        m_savedRevision = revision;
        setSaveTrouble({});
        return true;
    }
    logError("Failed to save files info to file " + m_parts.dataFile.path(), saved.error());
    setSaveTrouble(saved.error());
    return false;
}

QString FilesViewController::whyItCannotBeSaved() const {
    if (m_parts.dataFile.isOfNewerVersion())
        return errorReason({ErrorCode::NewerVersion, {}, {}, 0});
    if (!m_saveTrouble)
        return {};
    return Texts::tr("%1 (%2)").arg(errorReason(*m_saveTrouble), shownPath(m_parts.dataFile.path()));
}

void FilesViewController::setSaveTrouble(std::optional<Error> trouble) {
    if (trouble == m_saveTrouble)
        return;
    m_saveTrouble = std::move(trouble);
    emit saveTroubleChanged();
}

bool FilesViewController::loadDataFromDisk() {
    FilesInfoFile::Loaded loaded = m_parts.dataFile.load();
    m_savedRevision.reset();
    if (loaded.files) {
        m_files.assign(std::move(*loaded.files));
        if (!loaded.trouble || m_parts.dataFile.isOfNewerVersion())
            m_savedRevision = m_files.revision();
        emit numberOfFilesOfCurrentGroupChanged();
    }
    if (loaded.trouble)
        tellLoadingTrouble(m_parts.alerts, StoredList::Items, m_parts.dataFile.file(), *loaded.trouble,
                           loaded.earlierCopy);
    return !loaded.trouble;
}

Result<std::size_t> FilesViewController::mergeFilesInfoFile(const std::string& targetPath,
                                                            const std::string& withFile) {
    for (const std::string& path : {targetPath, withFile})
        if (!itemExistsAt(path)) {
            logLine("One of files to merge is absent " + targetPath + " and " + withFile);
            return Error::system("lstat", path, ENOENT);
        }
    FilesInfoFile sourceFile(withFile);
    auto source = sourceFile.read();
    if (!source)
        return source.error();
    if (sourceFile.isOfNewerVersion())
        return Error{ErrorCode::NewerVersion, "read", withFile, 0};
    if (isSameFile(targetPath, m_parts.dataFile.path())) {
        const std::size_t count = mergeInto(m_files, std::move(*source));
        emit numberOfFilesOfCurrentGroupChanged();
        if (!saveDataToDisk())
            return *m_saveTrouble;
        return count;
    }
    FilesInfoFile targetFile(targetPath);
    auto target = targetFile.read();
    if (!target)
        return target.error();
    FileList merged;
    merged.assign(std::move(*target));
    const std::size_t count = mergeInto(merged, std::move(*source));
    if (const auto saved = targetFile.save(merged.all()); !saved) {
        logError("Failed to save files info to file " + targetPath, saved.error());
        return saved.error();
    }
    return count;
}

std::optional<FilesViewController::Files>
FilesViewController::getAllFilesOfGroup(std::optional<std::int64_t> groupID) const {
    if (!groupID)
        return std::nullopt;
    Files files;
    std::ranges::copy_if(m_files.all(), std::back_inserter(files), [&](const ListedFile& file) {
        return *groupID == CurrentGroup::allFiles || file->groupID() == *groupID;
    });
    return files;
}

FilesViewController::Files FilesViewController::getAllFilesOfCurrentGroup() const {
    return m_filesController.arrangedObjects();
}

std::int64_t FilesViewController::numberOfFilesOfCurrentGroup() const {
    return static_cast<std::int64_t>(m_files.countOfGroup(m_parts.groups.currentGroupID()));
}

ListedFile FilesViewController::firstSelectedFile() const {
    return m_filesController.firstSelected();
}

void FilesViewController::removeFileFromList(const ListedFile& file) {
    m_files.remove(std::span(&file, 1));
    emit numberOfFilesOfCurrentGroupChanged();
}

void FilesViewController::removeFiles(const Files& files) {
    m_files.remove(files);
    emit numberOfFilesOfCurrentGroupChanged();
    saveDataToDisk();
}

void FilesViewController::tryToRemoveFiles(const Files& files) {
    Alerts& alerts = m_parts.alerts;
    if (ifNoHiddenInArray(files)) {
        if (m_parts.defaults.contains(defaultsKey::noRemoveWarning) ||
            alerts.ADRunWarningAlert(Texts::tr("Are you sure you want to remove selected items from list?"),
                                     Texts::tr("Items will be deleted only from list, not filesystem."),
                                     Texts::tr("Remove"), Texts::tr("Cancel"), {},
                                     defaultsKey::noRemoveWarning) == Alerts::firstButton)
            removeFiles(files);
        return;
    }
    const int answer = alerts.ADRunCriticalAlertSheet(
        Alert::Window::Main, Texts::tr("Unhide all files"),
        Texts::tr(
            "You are trying to remove some hidden files from list! Would you like to unhide them first?"),
        Texts::tr("Unhide"), Texts::tr("Remove"), Texts::tr("Cancel"));
    if (answer == Alerts::defaultAnswer)
        unhideFiles(files, false);
    else if (answer == Alerts::alternateAnswer)
        removeFiles(files);
}

void FilesViewController::removeSelectedRows(bool forceRemove) {
    m_parts.turns.run([this, forceRemove] { removeOrTakeOutOfGroup(getAllSelectedFiles(), forceRemove); });
}

void FilesViewController::removeSingleFile(std::size_t row, bool forceRemove) {
    const Files& rows = m_filesController.arrangedObjects();
    const Files files = row < rows.size() ? Files{rows[row]} : Files();
    m_parts.turns.run([this, files, forceRemove] { removeOrTakeOutOfGroup(files, forceRemove); });
}

void FilesViewController::removeOrTakeOutOfGroup(const Files& files, bool forceRemove) {
    if (files.empty())
        logLine("Nothing to remove");
    else if (forceRemove || m_parts.groups.currentGroupID() == CurrentGroup::allFiles)
        tryToRemoveFiles(files);
    else
        moveFiles(files, m_parts.groups.allFilesGroup());
}

void FilesViewController::moveFiles(const Files& files, std::int64_t toGroup) {
    m_files.changeEach(files, [&](File& changed) { changed.moveToGroup(toGroup); });
    emit numberOfFilesOfCurrentGroupChanged();
}

void FilesViewController::moveFiles(const std::vector<std::string>& paths, std::int64_t toGroup) {
    Files files;
    for (const std::string& path : paths)
        if (ListedFile file = findFileWithName(path))
            files.push_back(std::move(file));
    moveFiles(files, toGroup);
}

void FilesViewController::moveToCurrentGroupFiles(const Files& files) {
    moveFiles(files, m_parts.groups.currentGroupID());
}

FilesViewController::DragData
FilesViewController::dragDataForRows(const std::vector<std::size_t>& rows) const {
    const Files& arranged = m_filesController.arrangedObjects();
    DragData data;
    data.rows = rows;
    std::ranges::sort(data.rows);
    std::erase_if(data.rows, [&](std::size_t row) { return row >= arranged.size(); });
    for (const std::size_t row : data.rows) {
        data.rowPaths.emplace_back(arranged[row]->path());
        if (arranged[row]->state() == File::Visible)
            data.fileNames.emplace_back(arranged[row]->path());
    }
    return data;
}

void FilesViewController::acceptDropOfRows(const std::vector<std::string>& rowPaths) {
    m_parts.turns.run(
        [this, rowPaths, groupID = m_parts.groups.currentGroupID()] { moveFiles(rowPaths, groupID); });
}

} // namespace veilkeep
