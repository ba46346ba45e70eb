#include "filelist/StrayRecords.h"

#include "core/filesystem/ItemAtPath.h"
#include "core/tracking/FileAlias.h"
#include "core/tracking/ItemMatch.h"

#include <optional>
#include <string_view>

namespace veilkeep {
namespace {

std::optional<AliasRecord> aliasOf(const File& file) {
    return decodeAliasRecord(file.alias().value_or(std::string_view()));
}

} // namespace

StrayRecords::StrayRecords(const FileList& files) {
    for (const ListedFile& file : files.all())
        if (const auto alias = aliasOf(*file))
            m_byInode.emplace(alias->item.inode, file);
}

ListedFile StrayRecords::ofItemAt(const std::string& path) const {
    const auto found = describeItemAt(path);
    return found ? ofItem(*found) : nullptr;
}

ListedFile StrayRecords::ofItemOf(const File& added) const {
    const auto found = aliasOf(added);
    return found ? ofItem(*found) : nullptr;
}

ListedFile StrayRecords::ofItem(const AliasRecord& item) const {
    const auto [begin, end] = m_byInode.equal_range(item.item.inode);
    for (auto candidate = begin; candidate != end; ++candidate) {
        const ListedFile& file = candidate->second;
        const auto known = aliasOf(*file);
        if (known && isTheItem(*known, item, Closeness::Elsewhere) &&
            !itemExistsAt(std::string(file->path())))
            return file;
    }
    return nullptr;
}

} // namespace veilkeep
