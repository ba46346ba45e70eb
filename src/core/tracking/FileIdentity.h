#pragma once

#include "core/base/Result.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veilkeep {

// Stored in alias records: numbers are never given anew.
enum class ItemKind : std::uint8_t {
    Missing = 0,
    File = 1,
    Directory = 2,
    Link = 3,
    Fifo = 4,
    Socket = 5,
    CharacterDevice = 6,
    BlockDevice = 7,
};

struct FileTime {
    std::int64_t seconds = 0; // since 1970
    std::uint32_t nanoseconds = 0;

    bool operator==(const FileTime&) const = default;
};

// The file system's own name for an item, which tells an inode number given out again from its former
// bearer. To be compared, nothing else.
struct FileHandle {
    std::int32_t type = 0;
    std::string bytes;

    bool operator==(const FileHandle&) const = default;
};

// What tells one item of a volume from all others, however it is named. A move keeps all of it; a change of
// content keeps kind, inode, birth time and handle.
struct FileIdentity {
    ItemKind kind = ItemKind::Missing;
    std::uint64_t inode = 0;
    std::uint64_t size = 0; // bytes
    FileTime modificationTime;
    std::optional<FileTime> birthTime; // where the file system keeps one
    std::optional<FileHandle> handle;  // where the file system gives a lasting one

    bool operator==(const FileIdentity&) const = default;
};

struct ItemStatus {
    FileIdentity identity;                // without a handle
    std::optional<std::uint64_t> mountId; // Linux 5.8 and later
};

// Both look at the item itself, never following it: the one of that name in an open directory, or what the
// descriptor itself stands for (O_PATH will do) where the name is empty. The error's path is the name.
Result<ItemStatus> statusOfItem(int fd, const std::string& name = {});
Result<FileHandle> handleOfItem(int fd, const std::string& name = {});

// Whether handles of this type of file system stay the same over remounts and are never given out again.
bool givesLastingHandles(const std::string& fileSystemType);

} // namespace veilkeep
