#pragma once

#include <set>
#include <string>
#include <string_view>

namespace veilkeep::test {

// A directory of the test's own, removed at its end whatever rights lie below it, with HOME and the XDG
// directories of this process inside ("home" and below). It never lies under a path that Veilkeep protects,
// and an ordinary user may enter it.
class ScratchTree {
public:
    ScratchTree();
    ~ScratchTree();
    ScratchTree(const ScratchTree&) = delete;
    ScratchTree& operator=(const ScratchTree&) = delete;

    const std::string& root() const { return m_root; }
    std::string path(std::string_view relative) const;
    std::string home() const { return path("home"); }

    // Each makes the missing parents and answers the full path.
    std::string makeDirectory(std::string_view relative, unsigned int mode = 0755) const;
    std::string makeFile(std::string_view relative, std::string_view content = {},
                         unsigned int mode = 0644) const;

private:
    std::string m_root;
};

bool exists(const std::string& path);         // lstat: a dangling link exists
unsigned int modeOf(const std::string& path); // the item's own, without its kind; 0 where there is none
std::set<std::string> namesIn(const std::string& directory);
std::string readFile(const std::string& path);
void writeFile(const std::string& path, std::string_view content);

} // namespace veilkeep::test
