#pragma once

#include "core/rescue/HiddenFolders.h"
#include "core/tracking/HiddenItemScan.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// What a user names to be rescued: a directory in which it is searched for hidden items, a ".SYS_INDEX", or
// one hidden item, which comes back with all that is hidden below it.
struct RescueRoot {
    std::string path; // absolute; no link on the way to it
    bool isHiddenItem = false;
    bool isDirectory = false;

    // The directory that visible paths begin at.
    std::string base() const;

    // The hidden item that it lies in and that is not brought back with it; empty where there is none.
    std::string itemAround() const;

    // Links are followed as far as the user's words lead through them. NotAFile: neither a directory nor a
    // hidden item.
    static Result<RescueRoot> of(const std::string& absolutePath);
};

// Finds hidden items without any list.
class RescueSearch {
public:
    explicit RescueSearch(bool staysOnVolume) : m_scan(staysOnVolume) {}

    // Adds what is there; on the caller's thread and further ones. An error: it could not be looked into at
    // all.
    Result<void> lookInto(const RescueRoot& root);

    HiddenFolders& found() { return m_found; }
    std::uint64_t unreadable() const { return m_unreadable; }         // directories
    const std::vector<Error>& troubles() const { return m_troubles; } // of the first ones of them

    // From any thread.
    void cancel() { m_scan.cancel(); }
    std::uint64_t directoriesSeen() const { return m_scan.directoriesSeen(); }

private:
    HiddenItemScan m_scan;
    HiddenFolders m_found;
    std::uint64_t m_unreadable = 0;
    std::vector<Error> m_troubles;
};

} // namespace veilkeep
