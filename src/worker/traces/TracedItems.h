#pragma once

#include "core/filesystem/ResolvedPath.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// The items whose traces are to go, each with all that lies below it. One thread.
class TracedItems {
public:
    struct Item {
        std::vector<std::string> paths; // the visible path in each spelling that programs may use
        std::string place;        // where it lies now: hidden, or where there is nothing hidden, visible
        bool isDirectory = false; // also where nothing is left of it
    };

    // The absolute paths that they had before they were hidden.
    explicit TracedItems(const std::vector<std::string>& visiblePaths);

    const std::vector<Item>& items() const { return m_items; }

    // Whether the absolute path, by whatever links it leads there, is one of them or lies below one.
    bool contains(const std::string& path);

private:
    bool isOne(std::string_view path);

    std::vector<Item> m_items;
    std::set<std::string, std::less<>> m_paths, m_names;
    LinkResolver m_links;
};

} // namespace veilkeep
