#pragma once

#include "core/base/Result.h"
#include "core/protocol/InProgressRecord.h"

#include <string>
#include <vector>

namespace veilkeep {

// The folder in which workers leave their records and the application finds them, seen from the reading side.
// Workers may add to it at any time. Any thread.
class InProgressFolder {
public:
    explicit InProgressFolder(std::string path) : m_path(std::move(path)) {}

    const std::string& path() const { return m_path; }

    // With its missing parents, each 0700.
    Result<void> create() const;

    // Names of the regular files, the one changed first at the front: later facts win. Names that begin with
    // "." are still being written and left out.
    Result<std::vector<std::string>> entries() const;
    Result<PropertyDictionary> read(const std::string& entry) const; // links are not followed
    Result<void> remove(const std::string& entry) const;

    // Takes away what killed workers left half written: this user's own temporary files of more than a day.
    // The error is that of the last one that could not be removed.
    Result<void> removeAbandonedFiles() const;

private:
    std::string m_path;
};

// Makes the folder where it is missing and puts the record into it in one step: readers see all of it or
// nothing. A record of the same two paths is replaced. Not synced to the disk.
Result<void> writeRecord(const std::string& folder, const InProgressRecord& record);

} // namespace veilkeep
