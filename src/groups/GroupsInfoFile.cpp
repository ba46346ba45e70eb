#include "groups/GroupsInfoFile.h"

#include <utility>

namespace veilkeep {

GroupsInfoFile::GroupsInfoFile(std::string path, SafeFileOptions options)
    : m_file(std::move(path), "groups", std::move(options)) {}

GroupsInfoFile::Loaded GroupsInfoFile::load() {
    RecordsFile::Loaded loaded = m_file.load();
    std::optional<std::vector<Group>> groups;
    if (loaded.records)
        groups = recordsFrom<Group>(std::move(*loaded.records));
    return {std::move(groups), std::move(loaded.trouble), std::move(loaded.earlierCopy)};
}

Result<SafeFile::Saved> GroupsInfoFile::save(std::span<const ListedGroup> groups) {
    return m_file.save(propertiesOf(groups));
}

} // namespace veilkeep
