#pragma once

#include "core/base/Result.h"
#include "core/filesystem/FileStamp.h"
#include "core/log/TimeText.h"

#include <string>

namespace veilkeep {

// A second name of a file that a save is about to replace, or where the file system or the rights allow
// none, the file itself moved there. SafeFile's own.
struct KeptFile {
    std::string path; // empty: nothing was kept
    bool moved = false;
};

// Keeps the file as "NAME.damaged-2026-01-31T12-00-00Z", with "-2" and so on where that is taken. Nothing is
// overwritten.
Result<KeptFile> keepUnderDatedName(const std::string& path, TimePoint now);

// Undoes the keeping after a save that came to nothing, so that saves tried again and again on a full disk
// do not pile up names. A second name goes only while the first is surely the same file still.
void takeBack(const KeptFile& kept, const std::string& path, const FileStamp& before);

} // namespace veilkeep
