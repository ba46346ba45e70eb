#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

class MountTable;

// The directories that a walk must not enter, found once before it begins: mount points of file systems that
// hold nobody's files ("proc", "sysfs" and the like), and every mount point where the walk stays on one
// volume. Never changes afterwards, so any thread may ask.
class WalkBoundaries {
public:
    enum class Kind { PseudoFileSystems, EveryMount };

    // root is the real path of the walk's root.
    WalkBoundaries(const MountTable& table, std::string_view root, Kind kind);

    // True when the root itself lies on a file system that holds nobody's files.
    bool rootIsPseudo() const { return m_rootIsPseudo; }

    // A quick first question, by the name alone.
    bool mayStopAt(std::string_view name) const;
    // The path is relative to the root.
    bool stopsAt(std::string_view path) const;

private:
    std::vector<std::string> m_names; // last components of m_paths, sorted
    std::vector<std::string> m_paths; // relative to the root, sorted
    bool m_rootIsPseudo = false;
};

} // namespace veilkeep
