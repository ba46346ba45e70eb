#pragma once

#include "core/base/Result.h"

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

namespace veilkeep {

// Tells whether a file is still the one, with the content, that was looked at before. The time of change is
// left out: a further link to the file moves it.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modificationTime = 0; // nanoseconds since 1970

    static FileStamp of(const struct stat& status);
    bool operator==(const FileStamp&) const = default;
};

// The stamp of the file that the path leads to, links followed; nothing where there is none.
Result<std::optional<FileStamp>> fileStamp(const std::string& path);

} // namespace veilkeep
