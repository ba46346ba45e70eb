#pragma once

#include "core/tracking/VolumeMounter.h"
#include "filelist/DeepSearch.h"
#include "filelist/FileList.h"
#include "filelist/RecordsByItem.h"
#include "filelist/Turns.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace veilkeep {

// Checks whether records' items are where they should be, and looks for those that are not: first nearby,
// which costs next to nothing, then everywhere on their volumes. What is found the records follow. Nobody is
// asked or told. Owned by FilesViewController; main thread.
class MissingFiles : public QObject {
    Q_OBJECT
public:
    using Files = std::vector<ListedFile>;
    enum class Mounting { Never, Silently, WithQuestions };

    MissingFiles(FileList& files, Turns& turns, VolumeMounter* mounter);

    // Whether the item is there, at its place or nearby. One of the same name that took its place is told
    // apart: the record follows its own item where that lies nearby, and the log says so. It takes the new
    // one where its own is gone, but never another record's.
    bool isThere(const ListedFile& file, Mounting mounting);

    // isThere() for many at once, without mounting; answers those that are missing.
    Files missingOf(const Files& files);

    // Whether there is something at its path, and that is not another record's item.
    bool isAtItsPlace(const ListedFile& file);

    // Looks for them everywhere and comes back when it is through, or when the function wants it to end. The
    // event loop turns meanwhile.
    void searchAndWait(const Files& files, const std::function<bool()>& shouldEnd);

    // The same without waiting. A record follows when its turn to be changed has come.
    void searchInBackground(const Files& files) { m_background.search(files); }
    bool isSearching() const { return m_background.isRunning(); }
    bool isLookingFor(const ListedFile& file) const { return m_background.isLookingFor(file); }

    // As of the last look: the volume that it lies on is not mounted.
    bool isOnAbsentVolume(const ListedFile& file) const { return m_onAbsentVolume.contains(file); }

signals:
    void backgroundSearchEnded(); // for one record or all
    void backgroundSearchFinished();

private:
    bool confirm(const ListedFile& file); // false: nothing of its own is there
    const RecordsByItem& recordsByItem();
    bool lookNearby(const ListedFile& file, Mounting mounting);
    void take(const ListedFile& file, DeepSearch::Outcome outcome, const std::string& path);

    FileList& m_files;
    Turns& m_turns;
    VolumeMounter* m_mounter;
    DeepSearch m_background;
    std::unordered_set<ListedFile> m_onAbsentVolume;
    std::unique_ptr<RecordsByItem> m_recordsByItem; // null until one is needed
};

} // namespace veilkeep
