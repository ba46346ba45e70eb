#pragma once

#include "alerts/Alert.h"
#include "core/protocol/CloakWorkerDelegate.h"
#include "filelist/FileList.h"
#include "filelist/FilesController.h"
#include "filelist/FilesViewControllerParts.h"
#include "filelist/FilterController.h"
#include "filelist/ItemMover.h"
#include "filelist/MissingFiles.h"
#include "filelist/MovedItem.h"
#include "filelist/Restores.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace veilkeep {

struct InProgressRecord;

// Owns the one list of files and does everything to it: keeps it on the disk, adds and removes items, hides
// and brings them back, finds those that went missing. Main thread; operations that users start go through
// Turns (the slots do), the others belong to whoever runs at that moment.
class FilesViewController : public QObject, public CloakWorkerDelegate {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;

    explicit FilesViewController(const FilesViewControllerParts& parts);
    ~FilesViewController() override;

    // Loads the list, takes in what workers left, and checks it, cheaply; the deep search goes on behind.
    void start();

    FileList& files() { return m_files; }
    const FileList& files() const { return m_files; }
    FilesController& filesController() { return m_filesController; }
    FilterController& filterController() { return m_filterController; }

    // --- The data file (FilesViewController.cpp) ---
    std::string pathForDataFile() const; // makes its folder
    std::optional<std::vector<File>> readFilesInfoFileAtPath(const std::string& path) const;
    bool saveFilesArrayToDisk(const Files& files, const std::string& atPath); // false: logged, as it was
    // Nothing is written where nothing changed. False: saveTrouble() says why.
    bool saveDataToDisk();
    void loadDataFromDisk(); // tells the user when it was not the whole truth
    // How many records the source brought. Either file missing: logged, and nothing changes.
    Result<std::size_t> mergeFilesInfoFile(const std::string& targetPath, const std::string& withFile);
    const std::optional<Error>& saveTrouble() const { return m_saveTrouble; } // of the last save; lasting

    // --- Look-ups ---
    ListedFile findFileWithPath(std::string_view path) const { return m_files.withPath(path); }
    ListedFile findFileWithOriginalPath(std::string_view path) const {
        return m_files.withOriginalPath(path);
    }
    ListedFile findFileWithName(std::string_view path) const { return m_files.withPath(path); }
    bool ifAlreadyAddedFile(std::string_view path) const { return findFileWithOriginalPath(path) != nullptr; }
    std::optional<Files> getAllFilesOfGroup(std::optional<std::int64_t> groupID) const;
    Files getAllFilesOfCurrentGroup() const;
    std::int64_t numberOfFilesOfCurrentGroup() const;
    Files getAllSelectedFiles() const { return m_filesController.selectedObjects(); }
    ListedFile firstSelectedFile() const;

    // --- Adding (FilesViewControllerAdding.cpp) ---
    void addFiles(const std::vector<std::string>& paths);
    bool isAdding() const;
    void waitForAdding(); // runs the event loop until all batches are through
    void showProtectedAlertForFile(const std::string& path); // any thread

    // --- Removing and moving between groups (FilesViewController.cpp) ---
    void removeFileFromList(const ListedFile& file);
    void removeFiles(const Files& files);
    void tryToRemoveFiles(const Files& files);
    void removeSelectedRows(bool forceRemove);
    void removeSingleFile(std::size_t row, bool forceRemove); // of the arranged objects
    void moveFiles(const Files& files, std::int64_t toGroup);
    void moveFiles(const std::vector<std::string>& paths, std::int64_t toGroup);
    void moveToCurrentGroupFiles(const Files& files);

    // --- Drag and drop ---
    struct DragData {
        std::vector<std::size_t> rows;
        std::vector<std::string> rowPaths;  // "filesPBoardType"
        std::vector<std::string> fileNames; // for other programs: the visible ones
    };
    static constexpr const char* filesPasteboardType = "filesPBoardType";
    DragData dragDataForRows(const std::vector<std::size_t>& rows) const;
    void acceptDropOfRows(const std::vector<std::string>& rowPaths);
    void acceptDropOfFileNames(const std::vector<std::string>& paths) { addFiles(paths); }

    // --- Hiding and bringing back (FilesViewControllerHiding.cpp) ---
    bool hideFile(const ListedFile& file, bool privilidged, bool collectErrors);
    bool unhideFile(const ListedFile& file, bool privilidged, bool collectErrors);
    bool hideFiles(const Files& files, bool collectErrors);
    bool unhideFiles(const Files& files, bool collectErrors);
    bool hideAllFilesOfGroup(std::int64_t groupID, bool collectErrors);
    bool unhideAllFilesOfGroup(std::int64_t groupID, bool collectErrors);
    void hideAllFilesOfCurrentGroup();
    void unhideAllFilesOfCurrentGroup();
    const std::vector<MovedItem>& lastBatch() const { return m_lastBatch; } // in the order of its items
    const std::vector<Error>& lastBatchTroubles() const { return m_batchTroubles; } // what may not last
    bool isBatchRunning() const { return m_isBatchRunning; }
    // Asked before each item of a batch; true ends it there, as Ctrl-C does.
    void setStopAsked(std::function<bool()> stopAsked) { m_stopAsked = std::move(stopAsked); }

    bool ifAllFilesAreVisible() const;
    bool ifAllFilesAreHidden() const;
    bool isFileHidden(std::ptrdiff_t row) const;
    static bool ifNoHiddenInArray(const Files& files);
    static bool ifAllFilesInArrayAreVisible(const Files& files);

    void addError(const QString& error, const File& forFile);
    void clearErrorList();
    const std::vector<ErrorEntry>& errors() const { return m_errors; }
    int showErrorsMessage(const QString& title, const QString& withInfoText, const QStringList& andButtons);

    // For automatic passes: nobody can be asked, and no volume is walked or mounted.
    void setNobodyThere(bool nobodyThere);

    // --- What went missing (FilesViewControllerBroken.cpp) ---
    void performSanityCheck(const Files& files);
    bool performSanityCheckForFile(const ListedFile& file);
    void tryToFixFile(const ListedFile& file);
    Files brokenFiles() const;
    void searchDeeply(const Files& files) { m_missing.searchInBackground(files); }
    void searchAndWait(const Files& files); // the event loop turns; setStopAsked() and progress may end it
    bool isSearched(const ListedFile& file) const { return m_missing.isLookingFor(file); } // rows say so
    bool isOnAbsentVolume(const ListedFile& file) const { return m_missing.isOnAbsentVolume(file); }
    void updateStates(const Files& files); // of broken ones whose items are there again
    void locateFile(const ListedFile& file);
    // The end of the open panel; nothing: cancelled.
    void openNewLocationPanelDidEnd(const ListedFile& file, const std::optional<std::string>& path);
    void restoreDirectoryDialog(const std::string& path);
    void openRestorePanelDidEnd(const std::vector<std::string>& directories);
    void restoreDir(const std::string& directory); // on a thread of its own
    Restores& restores() { return m_restores; }

    // CloakWorkerDelegate
    void processTempFile(const PropertyDictionary& record) override;
    bool keepWhatTempFilesSaid() override;
    void restoreStarted(const std::string& directory) override;
    void restoreFinished() override;

public slots:
    // User actions and notifications; each waits its turn.
    void switchOnOff(int value);
    void hideOrUnhideFileInTable(const std::string& path);
    void revealFileInFinder(const std::string& path);
    void checkTempFiles();
    void shouldCleanRecents(const QString& answer);
    void performSanityCheckOfAll(); // with progress, and a search that can be cancelled

signals:
    void numberOfFilesOfCurrentGroupChanged();
    void saveTroubleChanged();
    void errorsChanged();
    void searchStateChanged();
    void batchRunningChanged(bool isRunning); // the on/off switch stands apart from the selection meanwhile

private:
    std::int32_t move(WorkerOperation operation, const ListedFile& file, bool privilidged);
    bool unhideParent(const ListedFile& file, bool collectErrors);
    MovedItem outcomeBefore(const ListedFile& file) const;
    bool mayAuthenticate() const;
    bool askToAuthenticate(const QString& title, const QString& message);
    void tell(const QString& title, const QString& message);
    void tellOrCollect(const ListedFile& file, std::int32_t code, bool collectErrors);
    bool runBatch(WorkerOperation operation, const Files& files, bool collectErrors);
    bool moveEach(WorkerOperation operation, const Files& batch, bool collectErrors);
    bool refuseToHide(const Files& batch, bool collectErrors);
    QString saveTroubleText() const;
    void setBatchRunning(bool isRunning);
    void takeIn(const InProgressRecord& said);

    void markBroken(const ListedFile& file);
    MissingFiles::Mounting mountingFor(const ListedFile& file);
    bool mayLocate(const ListedFile& file);
    bool mayLocateAlready(const ListedFile& file) const;
    bool findEverywhere(const ListedFile& file);
    void searchForMissing(const Files& batch);
    void askAboutVisible(const ListedFile& file);
    void askAboutHidden(const ListedFile& file);

    const FilesViewControllerParts m_parts;
    FileList m_files;
    FilesController m_filesController{m_files};
    FilterController m_filterController;
    std::vector<ErrorEntry> m_errors;
    ItemMover m_mover{m_files, m_parts.cloakWorker};
    MovedItem m_outcome; // of the item in hand
    std::vector<MovedItem> m_lastBatch;
    std::vector<Error> m_batchTroubles;
    bool m_isBatchRunning = false;
    std::function<bool()> m_stopAsked;
    MissingFiles m_missing{m_files, m_parts.turns, m_parts.mounter};
    std::unordered_set<ListedFile> m_searchedInBatch;
    std::map<std::string, bool> m_mayLocate; // answers by volume
    Restores m_restores{m_parts.cloakWorker};
    std::optional<Error> m_saveTrouble;
    std::optional<std::uint64_t> m_savedRevision;
    bool m_nobodyThere = false;
};

} // namespace veilkeep
