#include "core/tracking/IdentityComparison.h"

#include <algorithm>
#include <string_view>

namespace veilkeep {
namespace {

// FAT counts in two seconds, and some file systems round only once the item has been written to the disk.
bool isSameTimeRoundedOff(const FileTime& one, const FileTime& other) {
    return std::max(one.seconds, other.seconds) - std::min(one.seconds, other.seconds) <= 2;
}

bool haveSameContents(const FileIdentity& known, const FileIdentity& seen) {
    return known.size == seen.size && known.modificationTime == seen.modificationTime;
}

Likeness compareByBirth(const FileIdentity& known, const FileIdentity& seen) {
    if (known.inode != seen.inode)
        return Likeness::Different;
    if (!known.birthTime || !seen.birthTime)
        return Likeness::Unsure;
    return known.birthTime == seen.birthTime ? Likeness::Same : Likeness::Different;
}

Likeness compareByHandle(const FileIdentity& known, const FileIdentity& seen) {
    if (!known.handle || !seen.handle)
        return compareByBirth(known, seen);
    return known.handle == seen.handle ? Likeness::Same : Likeness::Different;
}

Likeness compareByInodeAndContents(const FileIdentity& known, const FileIdentity& seen) {
    const Likeness byBirth = compareByBirth(known, seen);
    if (byBirth == Likeness::Same || known.inode != seen.inode)
        return byBirth;
    return haveSameContents(known, seen) ? Likeness::Same : Likeness::Unsure;
}

// A directory changes size and times with each entry.
Likeness compareByContents(const FileIdentity& known, const FileIdentity& seen) {
    const bool looksSame = known.kind != ItemKind::Directory && known.size == seen.size &&
                           isSameTimeRoundedOff(known.modificationTime, seen.modificationTime);
    return looksSame ? Likeness::Same : Likeness::Unsure;
}

bool isOneOf(std::string_view type, std::initializer_list<std::string_view> types) {
    return std::ranges::find(types, type) != types.end();
}

} // namespace

LastingMarks lastingMarksOf(const std::string& fileSystemType) {
    if (givesLastingHandles(fileSystemType))
        return LastingMarks::Handle;
    if (isOneOf(fileSystemType, {"tmpfs", "f2fs", "bcachefs", "zfs", "jfs", "nilfs2"}))
        return LastingMarks::BirthTime;
    return fileSystemType == "overlay" ? LastingMarks::InodeAndContents : LastingMarks::None;
}

Likeness compareIdentities(const FileIdentity& known, const FileIdentity& seen, LastingMarks marks) {
    if (known.kind != seen.kind || known.kind == ItemKind::Missing)
        return Likeness::Different;
    switch (marks) {
    case LastingMarks::Handle:
        return compareByHandle(known, seen);
    case LastingMarks::BirthTime:
        return compareByBirth(known, seen);
    case LastingMarks::InodeAndContents:
        return compareByInodeAndContents(known, seen);
    case LastingMarks::None:
        return compareByContents(known, seen);
    }
    return Likeness::Different;
}

} // namespace veilkeep
