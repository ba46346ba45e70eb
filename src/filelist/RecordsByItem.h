#pragma once

#include "core/tracking/AliasRecord.h"
#include "filelist/FileList.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

namespace veilkeep {

// Tells which record an item belongs to that comes in at a path that no record has, so that it does not get a
// second one. Made for a batch of look-ups; main thread.
class RecordsByItem {
public:
    explicit RecordsByItem(const FileList& files); // as they are now

    // The record with nothing at its path whose item is for certain the one at this path, and was moved by
    // hand; null where there is none. Another name of an item that is at its record's path is an item of its
    // own.
    ListedFile strayAt(const std::string& path) const;
    ListedFile strayOf(const File& added) const; // the same for a record that was just made

    // Whether a record other than this one was made of the item for certain.
    bool isAnothers(const AliasRecord& item, const File& thanOf) const;

    // The record whose path is another way to this one, through links; null where there is none.
    ListedFile atSamePlace(const std::string& path) const;
    ListedFile atSamePlaceAs(const File& added) const; // the same for a record that was just made

private:
    using Condition = std::function<bool(const File& file)>;
    ListedFile stray(const AliasRecord& item) const;
    ListedFile atPlace(const AliasRecord& item, const std::string& path) const;
    ListedFile find(const AliasRecord& item, const Condition& condition) const;

    std::unordered_multimap<std::uint64_t, ListedFile> m_byInode;
};

} // namespace veilkeep
