#pragma once

#include "core/records/Group.h"
#include "core/storage/SafeFile.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace veilkeep {

// A record of the group list. It is changed through GroupViewController alone.
using ListedGroup = std::shared_ptr<const Group>;

// "GroupsInfo.Veilkeep": the groups on the disk, as a dictionary of "groups" and whatever a later version put
// beside it, with the care that FilesInfoFile takes of the list of items. Main thread.
class GroupsInfoFile {
public:
    explicit GroupsInfoFile(std::string path, SafeFileOptions options = {});

    const std::string& path() const { return m_file.path(); }

    struct Loaded {
        std::optional<std::vector<Group>> groups; // nothing where there is none, or none that can be read
        std::optional<Error> trouble;             // why the file itself could not be taken, or taken freely
        std::string earlierCopy;                  // taken instead; empty where none was
    };
    Loaded load();

    // NewerVersion when a later version wrote what was loaded: that must stay as it is.
    Result<SafeFile::Saved> save(std::span<const ListedGroup> groups);

    bool isOfNewerVersion() const { return m_isOfNewerVersion; }

private:
    SafeFile m_file;
    std::vector<PropertyDictionary::Entry> m_unknown; // beside "groups"
    bool m_isOfNewerVersion = false;
};

} // namespace veilkeep
