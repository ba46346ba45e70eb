#pragma once

#include "core/tracking/FileIdentity.h"
#include "core/tracking/VolumeIdentity.h"

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// The content of an alias record: where an item was last seen, and by what it is known again elsewhere.
struct AliasRecord {
    std::string lastPath;   // as it was given when the record was made
    VolumeIdentity volume;  // not known where the directory that should hold the item was missing too
    std::string volumePath; // from the volume's root, free of links but for the item; empty like the volume
    FileIdentity item;      // of kind Missing where nothing was at the path

    bool operator==(const AliasRecord&) const = default;
};

// The bytes begin with "VkAl" and their own count, 32 bits, least first. A version byte, the content and a
// digest of all before it follow. Empty in the one case that the count does not fit.
std::string encodeAliasRecord(const AliasRecord& record);

// Nothing for bytes that are damaged, cut short, of a later version or no alias record at all. Bytes after
// the record's own count are left aside.
std::optional<AliasRecord> decodeAliasRecord(std::string_view bytes);

// Whether the bytes begin like an alias record but are fewer than they should be.
bool isCutAliasRecord(std::string_view bytes);

} // namespace veilkeep
