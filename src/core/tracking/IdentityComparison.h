#pragma once

#include "core/tracking/FileIdentity.h"

#include <cstdint>
#include <string>

namespace veilkeep {

// Which marks of an item a file system can be trusted to keep. Measured over renames and remounts.
enum class LastingMarks : std::uint8_t {
    Handle,           // handles that carry a generation; inode numbers may be given out again
    BirthTime,        // inode and birth time
    InodeAndContents, // inode; the birth time changes when a file is copied up to the upper layer
    None,             // inode numbers are made up anew: only path, kind, size and times are left
};

LastingMarks lastingMarksOf(const std::string& fileSystemType);

enum class Likeness { Same, Unsure, Different };

// Whether what is seen now is the item that was known, by their marks alone. Unsure: kind (and inode, where
// that lasts) agree and nothing that lasts tells them apart.
Likeness compareIdentities(const FileIdentity& known, const FileIdentity& seen, LastingMarks marks);

} // namespace veilkeep
