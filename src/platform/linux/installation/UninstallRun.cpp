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
#include "platform/linux/installation/InstallRun.h"

#include <unistd.h>

#include <algorithm>

namespace veilkeep {

Result<std::vector<std::string>> UninstallRun::run() {
    const auto lock = lockInstallation(m_places);
    if (!lock)
        return lock.error();
    const auto bytes = readWholeFile(m_places.manifest, Manifest::maximumSize);
    auto manifest = bytes ? Manifest::parse(*bytes) : Result<Manifest>(bytes.error());
    if (!manifest)
        return manifest.error();
    m_manifest = std::move(*manifest);
    removeAutostart(); // whose program is looked at
    removeUnitLinks();
    removeItems();
    for (const std::string& leftover : {newCopy(m_places), formerCopy(m_places)})
        if (const auto removed = removeTree(leftover); !removed)
            keep(leftover);
    remove(m_places.manifest);
    removeDirectories();
    return std::move(m_kept);
}

// Entries that the user gave other names are his own.
void UninstallRun::removeAutostart() {
    for (const std::string& path : AutostartEntry(m_places.bundle).ofUser()) {
        if (lastPathComponent(path) != AutostartEntry::fileName) {
            keep(path);
            continue;
        }
        remove(path);
        (void)::rmdir(directoryOf(path).c_str()); // was made for it, where nothing else is there
    }
}

// By which systemd starts the unit with the session, where the user enabled it.
void UninstallRun::removeUnitLinks() {
    const std::string units = joinPath(XdgDirectories::current().configHome, "systemd/user");
    const std::string unit = joinPath(m_places.dataHome, "systemd/user/veilkeep-watch.service");
    for (const std::string& name : entryNamesIn(units)) {
        const std::string wants = joinPath(units, name), link = joinPath(wants, "veilkeep-watch.service");
        if (!name.ends_with(".wants") || readLink(link) != unit || !m_manifest.find(unit))
            continue;
        remove(link);
        (void)::rmdir(wants.c_str());
    }
}

void UninstallRun::removeItems() {
    for (const Manifest::Item& item : m_manifest.items)
        if (isUnchanged(item))
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
    logError("Not removed", Error::system("unlink", path, errno));
    keep(path);
}

void UninstallRun::keep(const std::string& path) {
    if (std::ranges::find(m_kept, path) == m_kept.end())
        m_kept.push_back(path);
}

} // namespace veilkeep
