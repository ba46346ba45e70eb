#pragma once

#include "groups/GroupsInfoFile.h"

#include <span>
#include <string>
#include <string_view>

namespace veilkeep {

// Images that groups were given without a file of the user's, as files of a folder of our own: "Icon.png",
// "Icon 2.png". Main thread.
class KeptIcons {
public:
    explicit KeptIcons(std::string folder);

    // The PNG as a new file (0600); its path.
    [[nodiscard]] Result<std::string> keep(std::string_view name, std::string_view png);

    // Removes those that no group has any more.
    void removeUnused(std::span<const ListedGroup> groups);

private:
    std::string m_folder;
};

} // namespace veilkeep
