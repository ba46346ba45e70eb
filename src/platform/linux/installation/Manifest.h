#pragma once

#include "core/base/Result.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// What an installation made: its files with their digests, links, and the directories that were not there.
// Kept as lines of text, so that whoever looks can read it. A path has two items while a version takes the
// place of another: either may be there.
struct Manifest {
    static constexpr std::size_t maximumSize = std::size_t{1} << 20; // bytes of its file

    struct Item {
        enum class Kind { File, Link };

        Kind kind;
        std::string path;
        std::string mark; // a file's digest, a link's target

        bool operator==(const Item&) const = default;
    };

    std::vector<Item> items;
    std::set<std::string> directories;

    static Result<Manifest> parse(std::string_view text);
    std::string text() const;

    const Item* find(const std::string& path) const; // null where it is none of ours

    // Whether what lies at the path is as one of its items says.
    bool hasUnchanged(const std::string& path) const;

    // Adds what the other one has and this one has not.
    void add(const Manifest& other);

    // Adds every file and directory of the tree, which was just copied, as if it lay at the place.
    Result<void> addTree(const std::string& tree, const std::string& place);
};

// Whether it is on the disk as it was made.
bool isUnchanged(const Manifest::Item& item);

} // namespace veilkeep
