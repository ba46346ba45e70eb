#include "platform/linux/checkup/DataCheckup.h"

#include "core/base/PathText.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/records/Group.h"
#include "core/storage/DefaultsKeys.h"
#include "core/storage/PropertyList.h"
#include "core/storage/RecordArchive.h"
#include "core/storage/SafeFile.h"
#include "core/storage/UserDefaults.h"
#include "platform/linux/AutostartEntry.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr mode_t modeBits = 07777;

template <class Parse>
ListFileFacts lookAtFile(const std::string& path, std::size_t maximumSize, Parse parse) {
    ListFileFacts facts{path, itemExistsAt(path), std::nullopt};
    if (!facts.isThere)
        return facts;
    auto bytes = readWholeFile(path, maximumSize);
    if (!bytes)
        facts.trouble = bytes.error();
    else if (const auto content = parse(*std::move(bytes)); !content)
        facts.trouble = content.error();
    if (facts.trouble)
        facts.trouble->path = path;
    return facts;
}

// One of a later version may be read, but is never saved.
Result<RecordArchive> archiveToSave(std::string bytes, std::string_view key) {
    auto archive = decodeArchive(std::move(bytes), key);
    if (archive && archive->version > RecordArchive::currentVersion)
        return Error{ErrorCode::NewerVersion, "read", {}, 0};
    return archive;
}

ListFileFacts lookAtRecords(const std::string& path, std::string_view key) {
    return lookAtFile(path, SafeFileOptions().maximumSize,
                      [key](std::string bytes) { return archiveToSave(std::move(bytes), key); });
}

// Where it will be made the nearest directory that is there has to let it be made.
std::optional<Error> faultInWriting(std::string directory) {
    while (!itemExistsAt(directory) && directory.size() > 1)
        directory = directoryOf(directory);
    if (::faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return Error::system("access", directory, errno);
    return std::nullopt;
}

void lookAtDirectory(DataFacts& facts) {
    facts.trouble = faultInWriting(facts.directory);
    struct stat status = {};
    facts.isThere = ::stat(facts.directory.c_str(), &status) == 0;
    if (!facts.isThere)
        return;
    facts.owner = status.st_uid;
    facts.mode = status.st_mode & modeBits;
    if (!S_ISDIR(status.st_mode))
        facts.trouble = Error::system("open", facts.directory, ENOTDIR);
    struct statvfs space = {};
    facts.freeBytes = ::statvfs(facts.directory.c_str(), &space) == 0
                          ? std::uint64_t{space.f_bavail} * space.f_frsize
                          : UINT64_MAX;
    for (std::string& name : entryNamesIn(facts.directory))
        if (name.find(".damaged-") != std::string::npos)
            facts.damagedCopies.push_back(std::move(name));
    std::ranges::sort(facts.damagedCopies);
}

bool isWatchEnabled() {
    constexpr const char* link = "systemd/user/graphical-session.target.wants/veilkeep-watch.service";
    return itemExistsAt(joinPath(XdgDirectories::current().configHome, link)) ||
           itemExistsAt(joinPath("/etc", link));
}

std::optional<std::size_t> countAutoHideGroups(const std::string& path) {
    auto bytes = readWholeFile(path, SafeFileOptions().maximumSize);
    if (!bytes && bytes.error().systemError == ENOENT)
        return 0;
    auto archive = bytes ? decodeArchive(*std::move(bytes), "groups") : Result<RecordArchive>(bytes.error());
    if (!archive)
        return std::nullopt;
    return static_cast<std::size_t>(std::ranges::count_if(archive->records, [](PropertyDictionary& record) {
        return Group(std::move(record)).autoHide().value_or(false);
    }));
}

} // namespace

DataFacts lookAtData() {
    const OwnPlaces places = OwnPlaces::current();
    DataFacts facts;
    facts.directory = places.dataDirectory;
    if (facts.directory.empty())
        return facts;
    lookAtDirectory(facts);
    facts.list = lookAtRecords(joinPath(facts.directory, "FilesInfo.Veilkeep"), "files");
    facts.groups = lookAtRecords(joinPath(facts.directory, "GroupsInfo.Veilkeep"), "groups");
    facts.settings = lookAtFile(places.defaultsFile, maximumPropertyListSize,
                                [](const std::string& bytes) { return parsePropertyList(bytes); });
    return facts;
}

AutoHideFacts lookAtAutoHide(const DataFacts& data) {
    AutoHideFacts facts;
    if (!data.directory.empty())
        facts.groups = countAutoHideGroups(data.groups.path);
    facts.isWatchEnabled = isWatchEnabled();
    facts.isLaunchedAtLogin = AutostartEntry().shouldLaunchAtLogin();
    const UserDefaults defaults;
    constexpr std::pair<const char*, const char*> ways[] = {
        {defaultsKey::hideOnSleep, "sleep"},
        {defaultsKey::hideOnLock, "the locked screen"},
        {defaultsKey::hideOnSessionSwitch, "another user's session"},
        {defaultsKey::hideOnQuit, "Veilkeep's end"},
    };
    for (const auto& [key, way] : ways)
        if (!defaults.boolean(key).value_or(true))
            facts.switchedOff.emplace_back(way);
    return facts;
}

} // namespace veilkeep
