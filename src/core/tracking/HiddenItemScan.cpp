#include "core/tracking/HiddenItemScan.h"

#include "core/base/PathText.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/MoveLeftover.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/names/HiddenName.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <mutex>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace veilkeep {
namespace {

// Tells one directory from another even when an inode number is given out again during a scan.
using Identity = std::tuple<std::uint32_t, std::uint32_t, std::uint64_t, std::int64_t, std::uint32_t>;

Identity identityOf(int descriptor) {
    struct statx status = {};
    if (::statx(descriptor, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_INO | STATX_BTIME, &status) != 0)
        return {};
    return {status.stx_dev_major, status.stx_dev_minor, status.stx_ino, status.stx_btime.tv_sec,
            status.stx_btime.tv_nsec};
}

// What a hide that was cut off has left, while its item is still in the directory above.
bool isPlaceholderOfHide(const OpenDirectory& hiddenDirectory, const DirectoryEntry& entry) {
    const Place place{hiddenDirectory.descriptor(), std::string(entry.name)};
    const auto status = statusOf(place);
    if (!status || !isPlaceholder(*status))
        return false;
    const MoveLeftover leftover =
        leftoverAt(place, {hiddenDirectory.descriptor(), joinPath("..", visibleName(place.name))});
    return leftover == MoveLeftover::PlaceholderFile || leftover == MoveLeftover::PlaceholderDirectory;
}

class HiddenItemVisitor final : public DirectoryVisitor {
public:
    HiddenItemVisitor(std::string root, const HiddenItemScan::Found& found)
        : m_root(std::move(root)), m_found(found) {}

    void visit(OpenDirectory& directory) override {
        if (directory.name() == hiddenDirectoryName)
            return visitHiddenDirectory(directory);
        while (const DirectoryEntry* entry = directory.next())
            if (entry->type == DT_DIR)
                directory.descend();
    }

    void unreadable(const std::string& path, int systemError) override {
        const std::lock_guard lock(m_mutex);
        ++m_summary.unreadable;
        if (path.empty())
            m_rootTrouble = systemError;
        if (m_summary.troubles.size() < HiddenItemScan::mostTroublesKept)
            m_summary.troubles.push_back(Error::system("read directory", fullPath(path), systemError));
    }

    HiddenItemScan::Summary& summary() { return m_summary; }
    int rootTrouble() const { return m_rootTrouble; }

private:
    // The same directory may be met again: through another mount, or moved meanwhile. What lies below it is
    // looked through again even so, because the first time may have lost it on the way.
    void visitHiddenDirectory(OpenDirectory& directory) {
        const bool isNew = isMetFirst(identityOf(directory.descriptor()));
        const std::string path = isNew ? fullPath(directory.path()) : std::string();
        while (const DirectoryEntry* entry = directory.next()) {
            if (isNew && entry->name != hiddenDirectoryName && !isPlaceholderOfHide(directory, *entry))
                report(joinPath(path, entry->name));
            if (entry->type == DT_DIR)
                directory.descend();
        }
    }

    bool isMetFirst(const Identity& identity) {
        const std::lock_guard lock(m_mutex);
        return identity == Identity() || m_met.insert(identity).second;
    }

    void report(const std::string& path) {
        const std::lock_guard lock(m_mutex);
        ++m_summary.found;
        m_found(path);
    }

    std::string fullPath(std::string_view path) const {
        return path.empty() ? m_root : joinPath(m_root, path);
    }

    const std::string m_root;
    const HiddenItemScan::Found& m_found;
    std::mutex m_mutex; // of all below
    std::set<Identity> m_met;
    HiddenItemScan::Summary m_summary;
    int m_rootTrouble = 0;
};

// As the caller spells it, unless that hides that the directory is a ".SYS_INDEX" ("." or a link).
std::string spellingFor(const std::string& directory) {
    if (lastPathComponent(directory) == hiddenDirectoryName && isDirectoryAt(directory))
        return directory;
    const auto real = realPath(directory);
    return real && lastPathComponent(*real) == hiddenDirectoryName ? *real : directory;
}

} // namespace

Result<HiddenItemScan::Summary> HiddenItemScan::scan(const std::string& directory, const Found& found) {
    const std::string root(withoutTrailingSlashes(directory));
    HiddenItemVisitor visitor(spellingFor(root), found);
    const Result<DirectoryWalker::End> end = m_walker.walk(root, visitor);
    if (!end)
        return end.error();
    if (visitor.rootTrouble() != 0)
        return Error::system("read directory", root, visitor.rootTrouble());
    visitor.summary().cancelled = *end == DirectoryWalker::End::Cancelled;
    return std::move(visitor.summary());
}

} // namespace veilkeep
