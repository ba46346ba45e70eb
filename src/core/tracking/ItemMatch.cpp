#include "core/tracking/ItemMatch.h"

#include "core/tracking/IdentityComparison.h"
#include "core/tracking/KnownVolumes.h"

namespace veilkeep {
namespace {

// Where a volume is not known there is nothing that its file system promises.
LastingMarks marksOf(const AliasRecord& known, const AliasRecord& found) {
    const bool both = known.volume.isKnown() && found.volume.isKnown();
    return both ? lastingMarksOf(known.volume.fileSystemType) : LastingMarks::None;
}

Likeness likeness(const AliasRecord& known, const AliasRecord& found) {
    const bool both = known.volume.isKnown() && found.volume.isKnown();
    if (both && !mayBeSameVolume(known.volume, found.volume))
        return Likeness::Different;
    return compareIdentities(known.item, found.item, marksOf(known, found));
}

} // namespace

bool isProvenToBe(const AliasRecord& known, const AliasRecord& found) {
    return likeness(known, found) == Likeness::Same && marksOf(known, found) != LastingMarks::None;
}

bool isTheItem(const AliasRecord& known, const AliasRecord& found, Closeness closeness) {
    if (known.item.kind == ItemKind::Missing) // nothing was there when the record was made
        return closeness == Closeness::RecordedPath;
    const Likeness alike = likeness(known, found);
    switch (closeness) {
    case Closeness::RecordedPath:
        return alike != Likeness::Different;
    case Closeness::OtherForm:
        // A directory without lasting marks has nothing but its name to be known by; a file has size and
        // times.
        return alike == Likeness::Same ||
               (alike == Likeness::Unsure && known.item.kind == ItemKind::Directory &&
                marksOf(known, found) == LastingMarks::None);
    case Closeness::Elsewhere:
        return isProvenToBe(known, found);
    }
    return false;
}

} // namespace veilkeep
