#include "core/names/LinuxProtectedPaths.h"

#include "core/base/PathText.h"
#include "core/environment/Bundle.h"
#include "core/environment/UserDatabase.h"
#include "core/filesystem/MountPoint.h"
#include "core/names/HiddenName.h"
#include "core/names/UserDirectories.h"

#include <sys/stat.h>

#include <algorithm>

namespace veilkeep {
namespace {

// Protected themselves, but not what lies in them.
constexpr std::string_view bareDirectories[] = {"/home", "/root", "/srv", "/snap", "/media", "/mnt"};
constexpr std::string_view directoriesOfUsers[] = {"/home", "/media"}; // a directory of each user's in them
constexpr std::string_view standardFolders[] = {"Library",   "Applications", "Desktop", "Sites",
                                                "Public",    "Pictures",     "Music",   "Movies",
                                                "Downloads", "Documents"};
constexpr const char* bundleContents = "/Contents";
constexpr std::string_view removableVolumes = "/run/media";

bool isBareDirectory(std::string_view path) {
    const auto isChild = [&](std::string_view directory) { return parentPath(path) == directory; };
    return std::find(std::begin(bareDirectories), std::end(bareDirectories), path) !=
               std::end(bareDirectories) ||
           std::any_of(std::begin(directoriesOfUsers), std::end(directoriesOfUsers), isChild);
}

bool isHiddenDirectory(std::string_view path) {
    return lastPathComponent(path) == hiddenDirectoryName;
}

// What does not exist is taken for a directory, so that the answer does not hang on that.
bool mayBeDirectory(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode) || S_ISLNK(status.st_mode);
}

std::vector<std::string> withResolvedForms(const std::vector<std::string>& paths, LinkResolver& links) {
    std::vector<std::string> forms;
    for (const std::string& path : paths) {
        if (!path.starts_with('/'))
            continue;
        const std::string& resolved = links.resolved(path);
        if (resolved != path)
            forms.push_back(resolved);
        forms.push_back(path);
    }
    return forms;
}

} // namespace

LinuxProtectedPaths::Surroundings LinuxProtectedPaths::Surroundings::current() {
    const std::string home = homeDirectory();
    const XdgDirectories directories = XdgDirectories::current();
    const OwnPlaces own = OwnPlaces::in(directories);
    const auto further = [home, configHome = directories.configHome] {
        std::vector<std::string> found = userDirectories(configHome, home);
        found.push_back(homeInUserDatabase(actingUserId()));
        for (std::string& other : homesInLocalFile())
            found.push_back(std::move(other));
        return found;
    };
    return {home,
            directories,
            {own.dataDirectory, own.stateDirectory},
            {own.defaultsFile},
            further,
            applicationBundlePath,
            veilkeep::isMountPoint};
}

LinuxProtectedPaths::LinuxProtectedPaths(Surroundings surroundings)
    : m_surroundings(std::move(surroundings)),
      m_ownDirectories(withResolvedForms(m_surroundings.ownDirectories, m_links)),
      m_ownFiles(withResolvedForms(m_surroundings.ownFiles, m_links)) {}

bool LinuxProtectedPaths::contains(const PathForms& path) const {
    return isHiddenDirectory(path.given) || isHiddenDirectory(path.resolved) || isInSystemTree(path.given) ||
           isInSystemTree(path.named) || isBareDirectory(path.given) || isBareDirectory(path.resolved) ||
           touchesOwn(path.given) || touchesOwn(path.resolved) ||
           m_surroundings.isMountPoint(path.resolved) || isOfFurtherPlaces(path);
}

bool LinuxProtectedPaths::isInSystemTree(std::string_view path) const {
    const std::string_view top = path.substr(1, path.find('/', 1) - 1);
    if (top == "run")
        return !isBelowRemovableVolume(path);
    return top == "boot" || top == "proc" || top == "sys" || top.starts_with("lib");
}

bool LinuxProtectedPaths::isBelowRemovableVolume(std::string_view path) const {
    if (!isSameOrBelow(path, removableVolumes))
        return false;
    for (path = parentPath(path); path.size() > removableVolumes.size(); path = parentPath(path))
        if (m_surroundings.isMountPoint(std::string(path)))
            return true;
    return false;
}

// Veilkeep's own, something in it, or a directory that contains it.
bool LinuxProtectedPaths::touchesOwn(std::string_view path) const {
    const auto touchesDirectory = [&](const std::string& own) {
        return isSameOrBelow(path, own) || isSameOrBelow(own, path);
    };
    const auto holdsFile = [&](const std::string& own) { return isSameOrBelow(own, path); };
    return std::any_of(m_ownDirectories.begin(), m_ownDirectories.end(), touchesDirectory) ||
           std::any_of(m_ownFiles.begin(), m_ownFiles.end(), holdsFile);
}

bool LinuxProtectedPaths::touchesBundle(std::string_view path) const {
    return !m_bundle.empty() &&
           (isSameOrBelow(m_bundle, path) || isSameOrBelow(path, m_bundle + bundleContents));
}

// Only directories, and for the program what lies in its bundle, can be among these places.
bool LinuxProtectedPaths::isOfFurtherPlaces(const PathForms& path) const {
    const bool directory = mayBeDirectory(path.resolved);
    if (!directory && path.resolved.find(bundleContents) == std::string::npos)
        return false;
    std::call_once(m_furtherPlacesFound, [this] { findFurtherPlaces(); });
    const auto isPath = [&](const std::string& known) {
        return known == path.given || known == path.resolved || known == path.named;
    };
    return touchesBundle(path.resolved) ||
           (directory && std::any_of(m_directoriesOfUser.begin(), m_directoriesOfUser.end(), isPath));
}

void LinuxProtectedPaths::findFurtherPlaces() const {
    m_bundle = m_surroundings.applicationBundle();
    const XdgDirectories& xdg = m_surroundings.directories;
    std::vector<std::string> directories = {xdg.dataHome, xdg.configHome, xdg.stateHome, xdg.cacheHome,
                                            xdg.runtimeDir};
    directories.push_back(m_surroundings.home);
    for (std::string& directory : m_surroundings.furtherDirectories())
        directories.push_back(std::move(directory));
    m_directoriesOfUser = withResolvedForms(directories, m_links);
    for (const std::string_view folder : standardFolders)
        if (!m_surroundings.home.empty())
            m_directoriesOfUser.push_back(joinPath(m_surroundings.home, folder));
}

} // namespace veilkeep
