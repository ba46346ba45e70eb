#include "platform/linux/installation/InstallRun.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/FileLock.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/filesystem/TreeCopy.h"
#include "core/log/Log.h"
#include "core/storage/FileDigest.h"
#include "core/storage/ReplaceFile.h"
#include "core/storage/ReplaceTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace veilkeep {
namespace {

// What was written by us and is as we left it.
Result<DesktopItem> itemAt(const std::string& path) {
    if (const auto target = readLink(path))
        return DesktopItem{path, {}, *target};
    auto content = readWholeFile(path, Manifest::maximumSize);
    if (!content)
        return content.error();
    return DesktopItem{path, std::move(*content), {}};
}

Result<void> writeItem(const DesktopItem& item) {
    if (item.target.empty()) {
        auto written = replaceFile(item.path, item.content);
        if (written && ::chmod(item.path.c_str(), 0644) != 0)
            return Error::system("chmod", item.path, errno);
        return written;
    }
    (void)::unlink(item.path.c_str());
    if (::symlink(item.target.c_str(), item.path.c_str()) != 0)
        return Error::system("symlink", item.path, errno);
    return syncDirectory(directoryOf(item.path));
}

Manifest::Item manifestItem(const DesktopItem& item) {
    using Kind = Manifest::Item::Kind;
    return item.target.empty() ? Manifest::Item{Kind::File, item.path, digestOf(item.content)}
                               : Manifest::Item{Kind::Link, item.path, item.target};
}

void logIfFailed(const char* what, const Result<void>& result) {
    if (!result)
        logError(what, result.error());
}

} // namespace

Result<UniqueFd> lockInstallation(const InstallationPlaces& places) {
    UniqueFd directory(::open(places.programs.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory)
        return Error::system("open", places.programs, errno);
    if (const auto locked = lockExclusively(directory.get(), places.programs, std::chrono::seconds(5));
        !locked)
        return locked.error();
    return directory;
}

std::string newCopy(const InstallationPlaces& places) {
    return joinPath(places.programs, ".Veilkeep.app.new");
}

std::string formerCopy(const InstallationPlaces& places) {
    return joinPath(places.programs, ".Veilkeep.app.old");
}

Result<void> InstallRun::run() {
    auto done = steps();
    if (!done)
        takeBack();
    return done;
}

Result<void> InstallRun::steps() {
    noteMissingDirectories(m_places.programs);
    if (entryNamesIn(m_places.programs).empty()) // of a run that was killed before it noted anything
        m_madeDirectories.insert(m_places.programs);
    if (auto made = makeNotedDirectories(); !made)
        return made;
    auto lock = lockInstallation(m_places);
    if (!lock)
        return lock.error();
    m_lock = std::move(*lock);
    for (const auto step : {&InstallRun::readFormer, &InstallRun::noteBeginning, &InstallRun::copyBundle,
                            &InstallRun::planItems, &InstallRun::noteBoth, &InstallRun::makeNotedDirectories,
                            &InstallRun::writeItems, &InstallRun::putInPlace})
        if (auto done = (this->*step)(); !done)
            return done;
    removeOutdated();
    logIfFailed("The former version is noted still", replaceFile(m_places.manifest, m_manifest.text()));
    return {};
}

// One that cannot be read is not written over: nobody would know any more what is ours.
Result<void> InstallRun::readFormer() {
    if (!itemExistsAt(m_places.manifest))
        return {};
    auto bytes = readWholeFile(m_places.manifest, Manifest::maximumSize);
    if (!bytes)
        return bytes.error();
    auto former = Manifest::parse(*bytes);
    if (!former) {
        Error error = former.error();
        error.path = m_places.manifest;
        return error;
    }
    m_former = std::move(*former);
    m_formerManifest = std::move(*bytes);
    return {};
}

// A run that is cut off while it copies can be taken back as well.
Result<void> InstallRun::noteBeginning() {
    m_isNoted = true;
    Manifest beginning = m_former;
    beginning.directories.insert(m_madeDirectories.begin(), m_madeDirectories.end());
    return replaceFile(m_places.manifest, beginning.text());
}

Result<void> InstallRun::copyBundle() {
    if (auto removed = removeTree(m_copy); !removed)
        return removed;
    if (auto copied = copyTree(m_source, m_copy); !copied)
        return copied;
    return m_manifest.addTree(m_copy, m_places.bundle);
}

// What is there already stays, but what an earlier installation made and nobody changed.
Result<void> InstallRun::planItems() {
    auto items = desktopItems(m_source, m_places);
    if (!items)
        return items.error();
    for (DesktopItem& item : *items) {
        if (itemExistsAt(item.path) && !m_former.hasUnchanged(item.path)) {
            logLine(item.path + " is not replaced: it is not as an installation left it");
            std::ranges::copy_if(m_former.items, std::back_inserter(m_manifest.items),
                                 [&](const Manifest::Item& former) { return former.path == item.path; });
            continue;
        }
        noteMissingDirectories(directoryOf(item.path));
        m_manifest.items.push_back(manifestItem(item));
        m_items.push_back(std::move(item));
    }
    return {};
}

// Before what it names is there, and as long as the former version may be there: a run that is cut off at any
// time can be taken back by it.
Result<void> InstallRun::noteBoth() {
    m_manifest.directories.insert(m_former.directories.begin(), m_former.directories.end());
    m_manifest.directories.insert(m_madeDirectories.begin(), m_madeDirectories.end());
    Manifest both = m_manifest;
    both.add(m_former);
    return replaceFile(m_places.manifest, both.text());
}

Result<void> InstallRun::writeItems() {
    for (const DesktopItem& item : m_items)
        if (auto written = write(item); !written)
            return written;
    return {};
}

Result<void> InstallRun::write(const DesktopItem& item) {
    Former former{item.path, std::nullopt};
    if (itemExistsAt(item.path)) {
        auto there = itemAt(item.path);
        if (!there)
            return there.error();
        former.item = std::move(*there);
    }
    m_replaced.push_back(std::move(former));
    return writeItem(item);
}

// Processes that run from the former one have their programs still, and find what they open later at the same
// path.
Result<void> InstallRun::putInPlace() {
    const auto placed = replaceTree(m_places.bundle, m_copy, formerCopy(m_places));
    return placed ? Result<void>() : Result<void>(placed.error());
}

void InstallRun::noteMissingDirectories(const std::string& path) {
    for (std::string each = path; !itemExistsAt(each); each = directoryOf(each))
        m_madeDirectories.insert(each);
}

// From the top down, which is their order.
Result<void> InstallRun::makeNotedDirectories() {
    for (const std::string& each : m_madeDirectories)
        if (auto made = makeDirectories(each, 0755); !made)
            return made;
    return {};
}

// What an older version had beside its bundle and this one has not.
void InstallRun::removeOutdated() {
    for (const Manifest::Item& item : m_former.items)
        if (!isSameOrBelow(item.path, m_places.bundle) && !m_manifest.find(item.path) && isUnchanged(item))
            (void)::unlink(item.path.c_str());
}

// The copy goes first: what is put back may need its room.
void InstallRun::takeBack() {
    if (m_lock)
        logIfFailed("A part of a copy is left", removeTree(m_copy));
    std::ranges::reverse(m_replaced);
    for (const Former& former : m_replaced)
        if (former.item)
            logIfFailed("A former file could not be put back", writeItem(*former.item));
        else
            (void)::unlink(former.path.c_str());
    if (m_isNoted && m_formerManifest)
        logIfFailed("What was installed is not noted", replaceFile(m_places.manifest, *m_formerManifest));
    else if (m_isNoted)
        (void)::unlink(m_places.manifest.c_str());
    for (auto each = m_madeDirectories.rbegin(); each != m_madeDirectories.rend(); ++each)
        (void)::rmdir(each->c_str());
}

} // namespace veilkeep
