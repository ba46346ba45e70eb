#pragma once

#include "core/protocol/CloakWorkerDelegate.h"
#include "filelist/BrokenFiles.h"
#include "filelist/CertaintyCheck.h"
#include "filelist/FileList.h"
#include "filelist/FileOrder.h"
#include "filelist/FilesController.h"
#include "filelist/FilesViewControllerParts.h"
#include "filelist/FilterController.h"
#include "filelist/HideOperations.h"
#include "filelist/ListSaver.h"
#include "filelist/Restores.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

class AddBatches;
class RecordsByItem;
struct InProgressRecord;

// Owns the one list of files and does everything to it: keeps it on the disk, adds and removes items, hides
// and brings them back, finds those that went missing. Main thread; operations that users start go through
// Turns (the slots do), the others belong to whoever runs at that moment.
class FilesViewController : public QObject, public CloakWorkerDelegate, public ListSaver {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;

    explicit FilesViewController(const FilesViewControllerParts& parts);
    ~FilesViewController() override;

    void load(); // the list, with what workers left

    // Whether the items are where they should be, cheaply; what is missing is searched for behind.
    void check();
    void checkBehind(); // the same without waiting: part by part, each in its turn

    FileList& files() { return m_files; }
    const FileList& files() const { return m_files; }
    FilesController& filesController() { return m_filesController; }
    FilterController& filterController() { return m_filterController; }

    // --- The data file (FilesViewController.cpp) ---
    std::string pathForDataFile() const; // makes its folder
    std::optional<std::vector<File>> readFilesInfoFileAtPath(const std::string& path) const;
    bool saveFilesArrayToDisk(const Files& files, const std::string& atPath); // false: logged, as it was
    // Nothing is written where nothing changed; that holds of a list of a newer version as well, which no
    // save succeeds with. False: saveTrouble() says why.
    bool saveDataToDisk() override;
    bool saveWhileEventsRun() override;
    QString whyItCannotBeSaved() const override;
    bool loadDataFromDisk(); // false: it was not the whole truth, and the user was told
    // How many records the source brought. ENOENT where either file is missing, which is logged. After an
    // error nothing has changed, but where the own list could not be saved: it holds them then.
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
    void acceptDropOfRows(const std::vector<std::string>& rowPaths); // in their turn, to the group of now

    // --- Hiding and bringing back (HideOperations.h) ---
    HideOperations& hideOperations() { return m_hideOperations; }
    bool hideFiles(const Files& files, bool collectErrors) {
        return m_hideOperations.hideFiles(files, collectErrors);
    }
    bool unhideFiles(const Files& files, bool collectErrors) {
        return m_hideOperations.unhideFiles(files, collectErrors);
    }
    bool hideAllFilesOfGroup(std::int64_t groupID, bool collectErrors);
    bool unhideAllFilesOfGroup(std::int64_t groupID, bool collectErrors);
    bool ifAllFilesAreVisible() const;
    bool ifAllFilesAreHidden() const;
    bool isFileHidden(std::ptrdiff_t row) const;
    static bool ifNoHiddenInArray(const Files& files);
    static bool ifAllFilesInArrayAreVisible(const Files& files);
    // For automatic passes: nobody can be asked, and no volume is searched or mounted.
    void setNobodyThere(bool nobodyThere) { m_brokenFiles.setNobodyThere(nobodyThere); }

    // For those that run while somebody is there: no volume is searched or mounted all the same.
    void setAutomatic(bool isAutomatic) { m_brokenFiles.setAutomatic(isAutomatic); }

    // --- What went missing (BrokenFiles.h, FilesViewControllerBroken.cpp) ---
    BrokenFiles& brokenFiles() { return m_brokenFiles; }
    Restores& restores() { return m_restores; }
    void performSanityCheck(const Files& files) { m_brokenFiles.performSanityCheck(files); }
    void tryToFixFile(const ListedFile& file) { m_brokenFiles.tryToFixFile(file); }
    void locateFile(const ListedFile& file);
    // The end of the open panel; nothing: cancelled.
    void openNewLocationPanelDidEnd(const ListedFile& file, const std::optional<std::string>& path);
    void restoreDirectoryDialog(const std::string& path);
    void openRestorePanelDidEnd(const std::vector<std::string>& directories);
    void restoreDir(const std::string& directory) { m_restores.start(directory); }

    // CloakWorkerDelegate
    void processTempFile(const PropertyDictionary& record) override;
    bool keepWhatTempFilesSaid() override;
    void restoreStarted(const std::string& directory) override;
    void restoreFinished() override;

public slots:
    // User actions and notifications (most in FilesViewControllerActions.cpp); each waits its turn. What is
    // selected or shown counts as it is when that comes, a row as it is now.
    void removeSelectedRows(bool forceRemove);
    void removeSingleFile(std::size_t row, bool forceRemove); // of the arranged objects
    void removeFilesAction() { removeSelectedRows(true); }
    void removeFromListAction() { removeSelectedRows(false); }
    void removeSelection() { m_filesController.clearSelection(); } // the rows' alone; no item leaves the list
    void hideAllFilesOfCurrentGroup();
    void unhideAllFilesOfCurrentGroup();
    void switchOnOff(int value);
    void hideOrUnhideFileInTable(const std::string& path);
    void revealFileInFinder(const std::string& path);
    void sortFiles(veilkeep::SortKey key, bool ascending); // the list itself; saved with its order
    void checkTempFiles();
    void shouldCleanRecents(const QString& answer);
    void restoreDirectory();        // one or more that the user chooses
    void performSanityCheckOfAll(); // with progress, and a search that can be cancelled

signals:
    void numberOfFilesOfCurrentGroupChanged();
    void checked(); // behind
    void saveTroubleChanged();

private:
    void notificationPosted(const QString& name, const QString& object);
    void takeIn(const InProgressRecord& said);
    void askAboutVisible(const ListedFile& file);
    void askAboutHidden(const ListedFile& file);
    void lookAtUncertain(Files files);
    void searchForBroken();

    std::unique_ptr<AddBatches> makeAddBatches();
    void addNewFiles(std::vector<File> files);
    bool isSaved();
    bool noteSave(const Result<SafeFile::Saved>& saved, std::uint64_t revision);
    void setSaveTrouble(std::optional<Error> trouble);
    void removeOrTakeOutOfGroup(const Files& files, bool forceRemove);

    const FilesViewControllerParts m_parts;
    FileList m_files;
    FilesController m_filesController{m_files};
    FilterController m_filterController;
    BrokenFiles m_brokenFiles{m_parts, m_files, *this};
    CertaintyCheck m_certaintyCheck;
    HideOperations m_hideOperations{m_parts, m_files, m_brokenFiles, *this};
    Restores m_restores{m_parts.cloakWorker, m_parts.progress};
    std::optional<Error> m_saveTrouble;
    std::optional<std::uint64_t> m_savedRevision;
    std::mutex m_saving; // whoever works on the data file
    std::unique_ptr<AddBatches> m_addBatches;
    std::unique_ptr<RecordsByItem> m_knownToWorkers; // while records of workers are taken in
    std::unique_ptr<RecordsByItem> m_knownToAdding;  // while a batch is added
};

} // namespace veilkeep
