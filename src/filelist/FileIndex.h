#pragma once

#include "core/records/File.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veilkeep {

// Where in the list a record lies, by its path and by its original path, and how many there are of each
// group. Knows records by their positions and keeps no text of them: 24 bytes for each, and 8 to 16 of
// buckets. FileList's own.
class FileIndex {
public:
    using Files = std::span<const std::shared_ptr<const File>>;
    using Position = std::uint32_t;

    // The first in list order whose bytes are equal.
    std::optional<std::size_t> withPath(Files files, std::string_view path) const;
    std::optional<std::size_t> withOriginalPath(Files files, std::string_view originalPath) const;
    std::optional<std::size_t> positionOf(Files files, const std::shared_ptr<const File>& file) const;
    std::size_t countOfGroup(std::int64_t groupID) const;

    void clear();
    void append(const File& file);                         // at the end of the list
    void update(std::size_t position, const File& file);   // as it is now
    void removeMarked(const std::vector<bool>& isLeaving); // those after them move up
    void arrange(std::span<const std::size_t> order);      // first comes what lay at order[0]

private:
    static constexpr Position none = UINT32_MAX;

    // One look-up: for each bucket a chain of positions, in no order.
    enum Key { ByPath, ByOriginalPath };
    struct Entry {
        std::uint32_t hash[2];
        Position next[2];
        std::int64_t groupID;
    };

    static Entry entryOf(const File& file);
    static std::uint32_t hashOf(std::string_view text);
    Position& bucket(Key key, std::uint32_t hash);
    Position firstOf(Key key, std::uint32_t hash) const;
    void link(Position position);
    void unlink(Position position);
    void chainAnew(std::size_t bucketCount);
    void discount(std::int64_t groupID);
    template <class IsWanted>
    std::optional<std::size_t> least(Key key, std::uint32_t hash, IsWanted isWanted) const;

    std::vector<Entry> m_entries;       // as the list is ordered
    std::vector<Position> m_buckets[2]; // a power of two, at least as many as entries
    std::unordered_map<std::int64_t, std::size_t> m_counts;
};

} // namespace veilkeep
