#pragma once

#include "core/tracking/AliasRecord.h"
#include "filelist/FileList.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace veilkeep {

// Tells which record an item belongs to that comes in at a new path, so that what was moved by hand does not
// get a second one. Made for a batch of look-ups; main thread.
class StrayRecords {
public:
    explicit StrayRecords(const FileList& files); // as they are now

    // The record with nothing at its path whose item is for certain the one at this path; null where there is
    // none. Another name of an item that is at its record's path is an item of its own.
    ListedFile ofItemAt(const std::string& path) const;
    ListedFile ofItemOf(const File& added) const; // the same for a record that was just made

private:
    ListedFile ofItem(const AliasRecord& item) const;

    std::unordered_multimap<std::uint64_t, ListedFile> m_byInode;
};

} // namespace veilkeep
