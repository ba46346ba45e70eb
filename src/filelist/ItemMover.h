#pragma once

#include "core/base/Error.h"
#include "core/filesystem/TouchedDirectories.h"
#include "core/protocol/CloakWorkerComunicator.h"
#include "core/protocol/WorkerAnswer.h"
#include "filelist/FileList.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace veilkeep {

// Has the worker move one record's item and lets the record follow. Nobody is asked or told. Owned by
// FilesViewController; main thread.
class ItemMover {
public:
    ItemMover(FileList& files, CloakWorkerComunicator& worker) : m_files(files), m_worker(worker) {}

    // Error 0: the item is moved and its record says so. Before any other answer the disk is looked at: what
    // another worker has moved meanwhile is taken as moved.
    CloakWorkerResult move(WorkerOperation operation, const ListedFile& file, bool privilidged);

    // At the end of a batch: makes the moves durable, and takes the records of what lies in moved folders
    // along. Answers the directories that could not be synced.
    std::vector<Error> finish();

private:
    std::optional<std::string> placeNow(WorkerOperation operation, const File& file) const;
    void takeAlong();
    std::string resolvedPath(const std::string& path);

    FileList& m_files;
    CloakWorkerComunicator& m_worker;
    TouchedDirectories m_touched;
    std::string m_folder, m_resolvedFolder; // of the last item, until a folder moves
    std::vector<Error> m_troubles;
    std::unordered_map<std::string, std::string> m_movedFolders; // their places before and after
};

} // namespace veilkeep
