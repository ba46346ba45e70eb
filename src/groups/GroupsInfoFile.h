#pragma once

#include "core/records/Group.h"
#include "core/storage/RecordsFile.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace veilkeep {

// A record of the group list. It is changed through GroupViewController alone.
using ListedGroup = std::shared_ptr<const Group>;

// "GroupsInfo.Veilkeep": the groups on the disk, with the care that RecordsFile takes. Main thread.
class GroupsInfoFile {
public:
    explicit GroupsInfoFile(std::string path, SafeFileOptions options = {});

    const std::string& path() const { return m_file.path(); }
    const RecordsFile& file() const { return m_file; }
    bool isAsLeft() { return m_file.isAsLeft(); }

    struct Loaded { // as RecordsFile::Loaded
        std::optional<std::vector<Group>> groups;
        std::optional<Error> trouble;
        std::string earlierCopy;
    };
    Loaded load();
    Result<SafeFile::Saved> save(std::span<const ListedGroup> groups);

    bool isOfNewerVersion() const { return m_file.isOfNewerVersion(); }

private:
    RecordsFile m_file;
};

} // namespace veilkeep
