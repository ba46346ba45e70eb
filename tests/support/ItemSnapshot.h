#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>

namespace veilkeep::test {

// Everything about one item that hiding and bringing back must not change.
struct ItemState {
    std::uint64_t inode = 0;
    unsigned int mode = 0; // with the kind of item
    unsigned int owner = 0, group = 0;
    std::int64_t modified = 0, born = 0; // nanoseconds since 1970
    std::string content;                 // of a regular file; the target of a link
    std::map<std::string, std::string> attributes;

    bool operator==(const ItemState&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const ItemState& state);

// The item ("" in the map) and, for a directory, everything below it by relative path. Throws where something
// cannot be read.
std::map<std::string, ItemState> snapshotOf(const std::string& path);

} // namespace veilkeep::test
