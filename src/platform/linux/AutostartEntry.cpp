#include "platform/linux/AutostartEntry.h"

#include "core/base/PathText.h"
#include "core/base/TakeUntil.h"
#include "core/environment/XdgDirectories.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ReadWholeFile.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/storage/ReplaceFile.h"
#include "platform/linux/ExecLine.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace veilkeep {
namespace {

constexpr std::size_t largestEntry = std::size_t{1} << 20;
constexpr std::string_view folder = "autostart";

std::string userDirectory() {
    return joinPath(XdgDirectories::current().configHome, folder);
}

// The most important one first.
std::vector<std::string> systemDirectories() {
    const char* const set = std::getenv("XDG_CONFIG_DIRS");
    std::string_view all = set && *set ? set : "/etc/xdg";
    std::vector<std::string> directories;
    while (!all.empty())
        if (const std::string_view each = takeUntil(':', all); each.starts_with('/'))
            directories.push_back(joinPath(each, folder));
    return directories;
}

std::string standardised(const std::string& path) {
    return realPath(path).value_or(cleanPath(path));
}

std::vector<std::string> entriesIn(const std::string& directory) {
    std::vector<std::string> names = entryNamesIn(directory);
    std::erase_if(names, [](const std::string& name) { return !name.ends_with(".desktop"); });
    std::ranges::sort(names);
    return names;
}

// A link is replaced itself: where it leads may be what another program or the system starts.
Result<void> replaceEntry(const std::string& path, const std::string& content) {
    if (!readLink(path))
        return replaceFile(path, content);
    const std::string beside = path + ".new";
    if (auto written = replaceFile(beside, content); !written)
        return written;
    if (::rename(beside.c_str(), path.c_str()) != 0) {
        const Error error = Error::system("rename", path, errno);
        (void)::unlink(beside.c_str());
        return error;
    }
    return syncDirectory(directoryOf(path));
}

} // namespace

AutostartEntry::AutostartEntry(std::string bundle) : m_program(bundledProgramPath(bundle, "Veilkeep")) {}

bool AutostartEntry::shouldLaunchAtLogin() const {
    return first().has_value();
}

Result<void> AutostartEntry::setShouldLaunchAtLogin(bool launches) {
    const auto found = first();
    if (found.has_value() == launches)
        return {};
    const std::string own = joinPath(userDirectory(), launches ? fileName : lastPathComponent(found->path));
    if (launches)
        return write(true, own);
    if (found->isUsers && ::unlink(own.c_str()) != 0)
        return Error::system("unlink", own, errno);
    const auto uncovered = first();
    if (uncovered && !uncovered->isUsers && lastPathComponent(uncovered->path) == lastPathComponent(own))
        return write(false, own);
    return syncDirectory(userDirectory());
}

std::vector<std::string> AutostartEntry::ofUser() const {
    std::vector<std::string> paths;
    for (const std::string& name : entriesIn(userDirectory())) {
        std::string path = joinPath(userDirectory(), name);
        if (stateOf(path).has_value())
            paths.push_back(std::move(path));
    }
    return paths;
}

bool AutostartEntry::isOfBundle(const std::string& program) const {
    return program.starts_with('/') && standardised(program) == standardised(m_program);
}

std::optional<bool> AutostartEntry::stateOf(const std::string& path) const {
    const auto content = readWholeFile(path, largestEntry);
    const auto entry = content ? startingEntry(*content) : std::nullopt;
    return entry && isOfBundle(entry->program) ? std::optional(entry->isOn) : std::nullopt;
}

std::vector<AutostartEntry::Entry> AutostartEntry::inEffect() const {
    std::map<std::string, Entry> byName;
    for (const std::string& name : entriesIn(userDirectory()))
        byName.emplace(name, Entry{joinPath(userDirectory(), name), true});
    for (const std::string& directory : systemDirectories())
        for (const std::string& name : entriesIn(directory))
            byName.emplace(name, Entry{joinPath(directory, name), false});
    std::vector<Entry> entries;
    for (auto& [name, entry] : byName)
        entries.push_back(std::move(entry));
    return entries;
}

std::optional<AutostartEntry::Entry> AutostartEntry::first() const {
    for (Entry& entry : inEffect())
        if (stateOf(entry.path).value_or(false))
            return std::move(entry);
    return std::nullopt;
}

Result<void> AutostartEntry::write(bool launches, const std::string& path) const {
    const auto exec = execWord(m_program, FieldCodes::Known);
    if (!exec)
        return exec.error();
    if (auto made = makeDirectories(userDirectory(), 0700); !made)
        return made;
    return replaceEntry(path, "[Desktop Entry]\n"
                              "Type=Application\n"
                              "Version=1.4\n"
                              "Name=Veilkeep\n"
                              "Icon=com.ostrel.Veilkeep\n"
                              "Exec=" +
                                  *exec +
                                  " --login\n"
                                  "Terminal=false\n" +
                                  (launches ? "X-GNOME-Autostart-enabled=true\n" : "Hidden=true\n"));
}

} // namespace veilkeep
