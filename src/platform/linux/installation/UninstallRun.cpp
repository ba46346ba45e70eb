#include "platform/linux/installation/UninstallRun.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/filesystem/TreeCopy.h"
#include "core/log/Log.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/installation/DesktopDatabase.h"
#include "platform/linux/installation/InstallRun.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {

Result<Uninstalled> UninstallRun::run() {
    const auto lock = lockInstallation(m_places);
    if (!lock)
        return lock.error();
    const auto bytes = readWholeFile(m_places.manifest, Manifest::maximumSize);
    auto manifest = bytes ? Manifest::parse(*bytes) : Result<Manifest>(bytes.error());
    if (!manifest) {
        Error error = manifest.error();
        error.path = m_places.manifest;
        return error;
    }
    m_manifest = std::move(*manifest);
    removeAutostart(); // whose program is looked at
    removeUnitLinks();
    removeItems();
    updateDesktopDatabase(m_places); // whose list may be all that is left in the directory
    for (const std::string& leftover : {newCopy(m_places), formerCopy(m_places)})
        if (const auto removed = removeTree(leftover); !removed)
            noteFailure(removed.error());
    for (const std::string& name : entryNamesIn(m_places.programs))
        if (name.starts_with(".veilkeep-")) // a manifest that a killed run did not finish
            remove(joinPath(m_places.programs, name));
    if (m_result.notRemoved.empty())
        remove(m_places.manifest); // else the next run needs it
    removeDirectories();
    return std::move(m_result);
}

// Entries that the user gave other names are his own. Nobody knows who made the directory.
void UninstallRun::removeAutostart() {
    for (const std::string& path : AutostartEntry(m_places.bundle).ofUser())
        if (lastPathComponent(path) == AutostartEntry::fileName)
            remove(path);
        else
            keep(path);
}

// By which systemd starts the unit with the session, where the user enabled it.
void UninstallRun::removeUnitLinks() {
    const std::string units = joinPath(XdgDirectories::current().configHome, "systemd/user");
    const std::string unit = joinPath(m_places.dataHome, "systemd/user/veilkeep-watch.service");
    for (const std::string& name : entryNamesIn(units)) {
        const std::string link = joinPath(joinPath(units, name), "veilkeep-watch.service");
        if (name.ends_with(".wants") && readLink(link) == unit && m_manifest.find(unit))
            remove(link);
    }
}

void UninstallRun::removeItems() {
    for (const Manifest::Item& item : m_manifest.items)
        if (m_manifest.hasUnchanged(item.path))
            remove(item.path);
        else if (itemExistsAt(item.path))
            keep(item.path);
}

// Below first. One that holds something else stays.
void UninstallRun::removeDirectories() {
    for (auto each = m_manifest.directories.rbegin(); each != m_manifest.directories.rend(); ++each)
        (void)::rmdir(each->c_str());
    noteRest(m_places.bundle);
}

void UninstallRun::noteRest(const std::string& path) {
    if (isDirectoryAt(path))
        for (const std::string& name : entryNamesIn(path))
            noteRest(joinPath(path, name));
    else if (itemExistsAt(path))
        keep(path);
}

void UninstallRun::remove(const std::string& path) {
    if (::unlink(path.c_str()) == 0)
        return;
    noteFailure(Error::system("unlink", path, errno));
}

void UninstallRun::noteFailure(Error error) {
    logError("Not removed", error);
    m_result.notRemoved.push_back(std::move(error));
}

void UninstallRun::keep(const std::string& path) {
    if (std::ranges::find(m_result.kept, path) == m_result.kept.end() &&
        std::ranges::find(m_result.notRemoved, path, &Error::path) == m_result.notRemoved.end())
        m_result.kept.push_back(path);
}

} // namespace veilkeep
