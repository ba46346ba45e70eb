#pragma once

#include <map>
#include <optional>
#include <string>

namespace veilkeep {

// The path with every link in its parent followed and its last component untouched, be it a link, absent or
// "..". Relative paths begin at the working directory. Nothing where the parent cannot be reached.
std::optional<std::string> withResolvedParent(const std::string& path);

// With every link followed. Nothing where that fails; errno says why.
std::optional<std::string> realPath(const std::string& path);

// The text of the link at the path. Nothing where there is no link or its text is too long; errno says why.
std::optional<std::string> readLink(const std::string& path);

// Follows links in many paths that share parents, looking at each directory once. What it saw it holds to.
class LinkResolver {
public:
    // The clean absolute path with all its links followed, the last component's too; from the first component
    // that does not exist on, as it is written.
    const std::string& resolved(const std::string& path);

private:
    std::map<std::string, std::string> m_known;
};

} // namespace veilkeep
