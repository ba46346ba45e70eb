#pragma once

#include "core/environment/XdgDirectories.h"
#include "core/filesystem/ResolvedPath.h"

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace veilkeep {

// One path as it is compared with what is protected. All clean and absolute.
struct PathForms {
    std::string given;    // by its text alone
    std::string resolved; // the links of its parent followed; as given where that cannot be done
    std::string named;    // as resolved, but what lies in the home keeps the home's own name
};

// What is never hidden on Linux, beside the list that ProtectedListPredicate holds: the system's trees, the
// directories that a desktop stands on, mount points, and Veilkeep itself. Usable from any thread.
class LinuxProtectedPaths {
public:
    struct Surroundings {
        std::string home; // empty where none is known
        XdgDirectories directories;
        std::vector<std::string> ownDirectories; // protected with all that lies in them
        std::vector<std::string> ownFiles;
        // Asked once each, when first needed, because their answers cost more than all the rest.
        std::function<std::vector<std::string>()> furtherDirectories; // other homes, XDG user directories
        std::function<std::string()> applicationBundle; // free of links; empty where there is none
        std::function<bool(const std::string&)> isMountPoint;

        static Surroundings current();
    };

    explicit LinuxProtectedPaths(Surroundings surroundings);

    bool contains(const PathForms& path) const;

private:
    bool isInSystemTree(std::string_view path) const;
    bool isBelowRemovableVolume(std::string_view path) const;
    bool touchesOwn(std::string_view path) const;
    bool touchesBundle(std::string_view path) const;
    bool isOfFurtherPlaces(const PathForms& path) const;
    void findFurtherPlaces() const;

    Surroundings m_surroundings;
    mutable LinkResolver m_links;
    std::vector<std::string> m_ownDirectories; // as named and with links resolved
    std::vector<std::string> m_ownFiles;
    mutable std::once_flag m_furtherPlacesFound;
    mutable std::vector<std::string> m_directoriesOfUser;
    mutable std::string m_bundle;
};

} // namespace veilkeep
