#include "core/tracking/ItemSearch.h"

#include "core/base/CHandles.h"
#include "core/base/PathText.h"
#include "core/base/SystemCall.h"
#include "core/base/UniqueFd.h"
#include "core/names/BaseCloakLogic.h"
#include "core/tracking/ItemMatch.h"

#include <dirent.h>
#include <fcntl.h>

#include <utility>

namespace veilkeep {
namespace {

// An overlay's entries may carry numbers of the layers below it.
bool entriesTellTheirInode(LastingMarks marks) {
    return marks != LastingMarks::InodeAndContents;
}

Result<AliasRecord> describeEntry(int directory, const std::string& name, const VolumeIdentity& volume,
                                  LastingMarks marks) {
    auto status = statusOfItem(directory, name);
    if (!status)
        return std::move(status).error();
    AliasRecord record;
    record.volume = volume;
    record.item = std::move(status->identity);
    if (marks == LastingMarks::Handle)
        if (auto handle = handleOfItem(directory, name))
            record.item.handle = std::move(*handle);
    return record;
}

bool isKnownByNameAs(const AliasRecord& known, const AliasRecord& found) {
    return compareIdentities(known.item, found.item, LastingMarks::None) == Likeness::Same;
}

// A single directory, which is not walked any further.
class ListedDirectory final : public OpenDirectory {
public:
    ListedDirectory(UniqueFd fd, std::string path, const std::function<bool()>& isCancelled)
        : m_stream(::fdopendir(fd.get())), m_path(std::move(path)), m_isCancelled(isCancelled) {
        if (m_stream)
            fd.release();
    }

    bool isOpen() const { return m_stream != nullptr; }
    bool hasHiddenDirectory() const { return m_hasHiddenDirectory; }

    const DirectoryEntry* next() override {
        const bool isOver = m_isOver || m_isCancelled();
        const dirent* const entry = isOver ? nullptr : ::readdir(m_stream.get());
        if (!entry)
            return nullptr;
        m_entry = {entry->d_name, entry->d_type, entry->d_ino};
        m_hasHiddenDirectory = m_hasHiddenDirectory || m_entry.name == hiddenDirectoryName;
        return &m_entry;
    }
    void descend() override {}
    void endWalk() override { m_isOver = true; }
    int descriptor() const override { return ::dirfd(m_stream.get()); }
    std::string_view name() const override { return lastPathComponent(m_path); }
    std::string path() const override { return m_path; }

private:
    DirectoryStream m_stream;
    std::string m_path;
    const std::function<bool()>& m_isCancelled;
    DirectoryEntry m_entry;
    bool m_hasHiddenDirectory = false;
    bool m_isOver = false;
};

UniqueFd openToList(int directory, const std::string& path, int flags) {
    return UniqueFd(retryOnInterrupt([&] {
        return ::openat(directory, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | flags);
    }));
}

} // namespace

ItemSearch::ItemSearch(std::string directory, VolumeIdentity volume)
    : m_directory(std::move(directory)),
      m_volume(std::move(volume)),
      m_marks(lastingMarksOf(m_volume.fileSystemType)) {}

void ItemSearch::add(std::size_t number, const AliasRecord& record) {
    const Wanted wanted = {number, &record};
    if (m_marks != LastingMarks::None) {
        m_filter.set(record.item.inode % filterSize);
        m_byInode.emplace(record.item.inode, wanted);
        return;
    }
    const std::string original = BaseCloakLogic::constructOriginalFullFileName(record.lastPath);
    const std::string name(lastPathComponent(original));
    m_byName.emplace(name, wanted);
    if (const std::string hidden = BaseCloakLogic::encryptFileName(name); hidden != name)
        m_byName.emplace(hidden, wanted);
}

void ItemSearch::visit(OpenDirectory& directory) {
    while (const DirectoryEntry* const entry = directory.next()) {
        if (m_marks == LastingMarks::None)
            lookByName(directory, *entry);
        else
            lookByInode(directory, *entry);
        if (entry->type == DT_DIR)
            directory.descend();
    }
}

void ItemSearch::lookIntoDirectory(const std::function<bool()>& isCancelled) {
    ListedDirectory directory(openToList(AT_FDCWD, m_directory, 0), {}, isCancelled);
    if (!directory.isOpen())
        return;
    visit(directory);
    const std::string hiddenName(hiddenDirectoryName);
    ListedDirectory hidden(directory.hasHiddenDirectory()
                               ? openToList(directory.descriptor(), hiddenName, O_NOFOLLOW)
                               : UniqueFd(),
                           hiddenName, isCancelled);
    if (hidden.isOpen())
        visit(hidden);
}

void ItemSearch::lookByInode(OpenDirectory& directory, const DirectoryEntry& entry) {
    ino_t inode = entry.inode;
    if (!entriesTellTheirInode(m_marks)) {
        const auto status = statusOfItem(directory.descriptor(), std::string(entry.name));
        inode = status ? status->identity.inode : 0;
    }
    if (!m_filter.test(inode % filterSize))
        return;
    const auto [begin, end] = m_byInode.equal_range(inode);
    for (auto wanted = begin; wanted != end; ++wanted) {
        const auto found = describeEntry(directory.descriptor(), std::string(entry.name), m_volume, m_marks);
        if (found && isTheItem(*wanted->second.record, *found, Closeness::Elsewhere))
            take(directory, entry.name, wanted->second);
    }
}

void ItemSearch::lookByName(OpenDirectory& directory, const DirectoryEntry& entry) {
    const auto [begin, end] = m_byName.equal_range(entry.name);
    for (auto wanted = begin; wanted != end; ++wanted) {
        const auto found = describeEntry(directory.descriptor(), std::string(entry.name), m_volume, m_marks);
        if (found && isKnownByNameAs(*wanted->second.record, *found))
            take(directory, entry.name, wanted->second);
    }
}

void ItemSearch::take(OpenDirectory& directory, std::string_view name, const Wanted& wanted) {
    std::string path = joinPath(directory.path(), name);
    const std::lock_guard lock(m_mutex);
    const auto [known, isNew] = m_found.try_emplace(wanted.number, Finding{std::move(path)});
    // Another name of the same file is as good as the first.
    known->second.isOnlyOne = known->second.isOnlyOne && (isNew || m_marks != LastingMarks::None);
    if (isNew && m_certain && m_marks != LastingMarks::None)
        m_certain(wanted.number, joinPath(m_directory, known->second.path));
    if (m_marks != LastingMarks::None && m_found.size() == m_byInode.size())
        directory.endWalk();
}

std::map<std::size_t, std::string> ItemSearch::found() const {
    const std::lock_guard lock(m_mutex);
    std::map<std::size_t, std::string> paths;
    for (const auto& [number, finding] : m_found)
        if (finding.isOnlyOne)
            paths.emplace(number, joinPath(m_directory, finding.path));
    return paths;
}

} // namespace veilkeep
