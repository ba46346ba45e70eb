#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// A ".SYS_INDEX" and the items in it that are to come back.
struct HiddenFolder {
    std::string path;
    std::vector<std::string> names; // in the order of their bytes, each once
};

// Items that a search has found, kept by the ".SYS_INDEX" that they lie in: a path that a million of them
// share is held once. Not thread-safe.
class HiddenFolders {
public:
    void add(std::string_view itemPath); // again and again does no harm

    bool isEmpty() const { return m_folders.empty(); }

    // Brings them into their order; to be called once all are added.
    void arrange();

    // Of arranged ones.
    bool contains(std::string_view itemPath) const;
    std::size_t itemCount() const;
    std::size_t folderCount() const { return m_order.size(); }

    // Of arranged ones the deepest first, so that no path changes before its turn comes. False from the
    // function ends it.
    void forEach(const std::function<bool(const HiddenFolder&)>& function) const;

private:
    using Names = std::string; // each ended by a NUL; in order and each once when arranged

    std::map<std::string, Names, std::less<>> m_folders;
    std::map<std::string, Names, std::less<>>::iterator m_last = m_folders.end();
    std::vector<const std::pair<const std::string, Names>*> m_order;
};

} // namespace veilkeep
