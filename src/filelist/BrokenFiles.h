#pragma once

#include "filelist/FileList.h"
#include "filelist/FilesViewControllerParts.h"
#include "filelist/ListSaver.h"
#include "filelist/MissingFiles.h"

#include <QObject>

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace veilkeep {

// Finds out which items are broken, and repairs what can be repaired: at start-up, on the user's demand and
// before each move. Owned by FilesViewController; main thread.
class BrokenFiles : public QObject {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;

    BrokenFiles(const FilesViewControllerParts& parts, FileList& files, ListSaver& saver);

    // Cheap steps alone. The second saves the list after.
    void markMissing(const Files& files);
    void performSanityCheck(const Files& files);
    bool performSanityCheckForFile(const ListedFile& file);

    // One attempt, a search of the volume included; the state follows from where the item is. Of an item on a
    // volume that comes and goes the user is asked first, once for each volume in a batch. While nobody is
    // there, or in what nobody has asked for, it takes the cheap steps alone.
    void tryToFixFile(const ListedFile& file);

    // Around a batch: what it will miss is searched for together, and no more by each item's attempt.
    void beginBatch(const Files& batch);
    void endBatch();

    Files brokenFiles() const;
    void searchDeeply(const Files& files) { m_missing.searchInBackground(files); }
    void searchAndWait(const Files& files); // the event loop turns meanwhile
    bool isSearching() const { return m_missing.isSearching(); }
    bool isSearched(const ListedFile& file) const { return m_missing.isLookingFor(file); }
    bool isOnAbsentVolume(const ListedFile& file) const { return m_missing.isOnAbsentVolume(file); }

    void setNobodyThere(bool nobodyThere) { m_nobodyThere = nobodyThere; }
    bool isNobodyThere() const { return m_nobodyThere || m_parts.alerts.isNobodyThere(); }

    void setAutomatic(bool isAutomatic) { m_isAutomatic = isAutomatic; }

    void markBroken(const ListedFile& file);

signals:
    void searchStateChanged();

private:
    void updateStates();
    void searchWithProgress(const Files& files); // that can be cancelled
    bool mayLocate(const ListedFile& file);
    bool mayBeFoundEverywhere(const ListedFile& file, MissingFiles::Mounting mounting) const;
    MissingFiles::Mounting mountingFor(const ListedFile& file);
    bool takesCheapStepsAlone() const { return m_isAutomatic || isNobodyThere(); }

    const FilesViewControllerParts m_parts;
    FileList& m_files;
    ListSaver& m_saver;
    MissingFiles m_missing;
    bool m_nobodyThere = false;
    bool m_isAutomatic = false;
    bool m_isInBatch = false;
    std::unordered_set<ListedFile> m_searchedInBatch;
    std::map<std::string, bool> m_mayLocate; // answers of the batch, by volume
};

} // namespace veilkeep
