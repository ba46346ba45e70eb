#include "platform/linux/filemanagers/EntryFile.h"

#include "core/filesystem/ReadWholeFile.h"
#include "platform/linux/filemanagers/EntryMark.h"
#include "platform/linux/filemanagers/PlacedFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <optional>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::size_t mostBytes = std::size_t{1} << 20;

// Nothing for what is no file of ours.
std::optional<MarkedContent> contentAt(const std::string& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto content = readWholeFile(path, mostBytes);
    return content ? MarkedContent::of(*content) : std::nullopt;
}

bool isNothingAt(const std::string& path) {
    struct stat status = {};
    return ::lstat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

} // namespace

EntryFile::EntryFile(std::string path, std::string content, std::string version, mode_t mode)
    : m_path(std::move(path)), m_content(std::move(content)), m_version(std::move(version)), m_mode(mode) {}

MenuEntry::State EntryFile::state() const {
    if (isNothingAt(m_path))
        return State::Absent;
    const auto found = contentAt(m_path);
    if (!found)
        return State::Foreign;
    if (!found->isUnchanged())
        return State::Changed;
    const bool isCurrent = found->unmarked == m_content && found->mark.version == m_version;
    return isCurrent ? State::Current : State::Outdated;
}

Result<void> EntryFile::install(int directoriesMade) {
    switch (state()) {
    case State::Absent:
        break;
    case State::Outdated:
        directoriesMade = contentAt(m_path).value_or(MarkedContent()).mark.directories;
        break;
    case State::Current:
    case State::Changed:
        return {};
    case State::Foreign:
        return Error::system("replace", m_path, EEXIST);
    }
    return placeFile(m_path, MarkedContent::written(m_content, {m_version, directoriesMade, {}}), m_mode);
}

Result<int> EntryFile::remove() {
    const State found = state();
    if (found == State::Absent || found == State::Foreign)
        return 0;
    if (found == State::Changed)
        return Error::system("compare", m_path, ESTALE);
    const int directories = contentAt(m_path).value_or(MarkedContent()).mark.directories;
    if (auto removed = removePlacedFile(m_path); !removed)
        return removed.error();
    return directories;
}

} // namespace veilkeep
