#pragma once

#include "core/filesystem/DirectoryWalker.h"
#include "core/tracking/AliasRecord.h"
#include "core/tracking/IdentityComparison.h"

#include <bitset>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veilkeep {

// Looks for any number of items below a directory, in one walk. An item is known by its marks wherever it
// lies; where the file system keeps none, by its name, plain or hidden, with size and times, if one file
// alone answers to them.
class ItemSearch final : public DirectoryVisitor {
public:
    // The volume is the one that the directory lies on, and the walk must stay on it.
    ItemSearch(std::string directory, VolumeIdentity volume);

    // The record must outlive this. All are added before the walk.
    void add(std::size_t number, const AliasRecord& record);

    // Told of each item whose marks are found, at once; on any thread, never twice at the same time.
    void setCertain(std::function<void(std::size_t number, const std::string& path)> certain) {
        m_certain = std::move(certain);
    }

    // Instead of a walk: looks into the directory and its ".SYS_INDEX" alone. Asks before each entry whether
    // to go on.
    void lookIntoDirectory(const std::function<bool()>& isCancelled);

    // By number, afterwards; full paths.
    std::map<std::size_t, std::string> found() const;

    void visit(OpenDirectory& directory) override;
    void unreadable(const std::string&, int) override {} // what cannot be read cannot hold what is found

private:
    static constexpr std::size_t filterSize = std::size_t{1} << 16;
    struct Wanted {
        std::size_t number;
        const AliasRecord* record;
    };
    struct Finding {
        std::string path;
        bool isOnlyOne = true;
    };

    void lookByInode(OpenDirectory& directory, const DirectoryEntry& entry);
    void lookByName(OpenDirectory& directory, const DirectoryEntry& entry);
    void take(OpenDirectory& directory, std::string_view name, const Wanted& wanted);

    const std::string m_directory;
    const VolumeIdentity m_volume;
    const LastingMarks m_marks;
    std::bitset<filterSize> m_filter; // of the inodes' low bits: most entries are none of those looked for
    std::function<void(std::size_t, const std::string&)> m_certain;
    std::unordered_multimap<ino_t, Wanted> m_byInode;
    std::multimap<std::string, Wanted, std::less<>> m_byName;

    mutable std::mutex m_mutex; // of what follows
    std::map<std::size_t, Finding> m_found;
};

} // namespace veilkeep
