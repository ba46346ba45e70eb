#pragma once

#include "core/base/Result.h"
#include "core/filesystem/DirectoryWalker.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veilkeep {

// Looks for hidden items below a directory, on all processors: each entry of each real directory named
// ".SYS_INDEX" is one, whatever it is, but for a ".SYS_INDEX" in there and for placeholders of moves that
// were cut off; that ".SYS_INDEX" and the hidden directories themselves are looked through as well. Moves
// nothing. One scan after another; all are over once
// cancelled.
class HiddenItemScan {
public:
    static constexpr std::size_t mostTroublesKept = 5;

    struct Summary {
        std::uint64_t found = 0;
        std::uint64_t unreadable = 0; // directories
        std::vector<Error> troubles;  // of the first unreadable ones
        bool cancelled = false;
    };

    explicit HiddenItemScan(bool staysOnVolume = false) : m_walker({.stayOnVolume = staysOnVolume}) {}

    // Gets an item's path as it is now: the directory as the caller spelled it, without "/" at its end, and
    // what follows; where the directory is a ".SYS_INDEX" under another name, its real path instead. Called
    // on any thread but never twice at the same time.
    using Found = std::function<void(const std::string& path)>;

    // Each item once, however many mounts show it. An error means that the directory itself could not be
    // read; others that cannot be read are counted.
    Result<Summary> scan(const std::string& directory, const Found& found);

    // From any thread or a signal handler, at any time.
    void cancel() { m_walker.cancel(); }

    std::uint64_t directoriesSeen() const { return m_walker.directoriesSeen(); } // in all scans so far

private:
    DirectoryWalker m_walker;
};

} // namespace veilkeep
