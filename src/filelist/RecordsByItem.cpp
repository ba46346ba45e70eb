#include "filelist/RecordsByItem.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/filesystem/ResolvedPath.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemMatch.h"

#include <sys/stat.h>

#include <optional>
#include <string_view>

namespace veilkeep {
namespace {

std::optional<AliasRecord> aliasOf(const File& file) {
    return decodeAliasRecord(file.alias().value_or(std::string_view()));
}

} // namespace

RecordsByItem::RecordsByItem(const FileList& files) {
    for (const ListedFile& file : files.all())
        if (const auto alias = aliasOf(*file))
            m_byInode.emplace(alias->item.inode, file);
}

ListedFile RecordsByItem::strayAt(const std::string& path) const {
    const auto found = describeItemAt(path);
    return found ? stray(*found) : nullptr;
}

ListedFile RecordsByItem::strayOf(const File& added) const {
    const auto found = aliasOf(added);
    return found ? stray(*found) : nullptr;
}

ListedFile RecordsByItem::stray(const AliasRecord& item) const {
    return find(item, [&](const File& file) {
        const auto known = aliasOf(file);
        return known && isTheItem(*known, item, Closeness::Elsewhere) &&
               !itemExistsAt(std::string(file.path()));
    });
}

bool RecordsByItem::isAnothers(const AliasRecord& item, const File& thanOf) const {
    return find(item, [&](const File& file) {
               const auto known = aliasOf(file);
               return &file != &thanOf && known && isTheItem(*known, item, Closeness::Elsewhere);
           }) != nullptr;
}

ListedFile RecordsByItem::atSamePlace(const std::string& path) const {
    struct stat status = {}; // cheaper than all that can be known of the item
    if (::lstat(path.c_str(), &status) == 0 && !m_byInode.contains(status.st_ino))
        return nullptr;
    const auto found = describeItemAt(path);
    return found ? atPlace(*found, path) : nullptr;
}

ListedFile RecordsByItem::atSamePlaceAs(const File& added) const {
    const auto found = aliasOf(added);
    return found ? atPlace(*found, std::string(added.path())) : nullptr;
}

ListedFile RecordsByItem::atPlace(const AliasRecord& item, const std::string& path) const {
    return find(item, [&](const File& file) {
        const auto known = withResolvedParent(std::string(file.path()));
        return known && known == withResolvedParent(path);
    });
}

ListedFile RecordsByItem::find(const AliasRecord& item, const Condition& condition) const {
    const auto [begin, end] = m_byInode.equal_range(item.item.inode);
    for (auto candidate = begin; candidate != end; ++candidate)
        if (condition(*candidate->second))
            return candidate->second;
    return nullptr;
}

} // namespace veilkeep
