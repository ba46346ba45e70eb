#include "groups/KeptIcons.h"

#include "core/base/PathText.h"
#include "core/filesystem/Directories.h"
#include "core/filesystem/ItemAtPath.h"
#include "core/log/Log.h"
#include "core/storage/ReplaceFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veilkeep {
namespace {

constexpr std::string_view suffix = ".png";

} // namespace

KeptIcons::KeptIcons(std::string folder) : m_folder(std::move(folder)) {}

Result<std::string> KeptIcons::keep(std::string_view name, std::string_view png) {
    if (auto made = makeDirectories(m_folder, 0700); !made)
        return made.error();
    std::string path;
    for (int number = 1; path.empty() || itemExistsAt(path); ++number)
        path = joinPath(m_folder, std::string(name) + (number == 1 ? "" : ' ' + std::to_string(number)) +
                                      std::string(suffix));
    if (auto written = replaceFile(path, png); !written && written.error().code != ErrorCode::NotDurable)
        return written.error();
    return path;
}

void KeptIcons::removeUnused(std::span<const ListedGroup> groups) {
    for (const std::string& name : entryNamesIn(m_folder)) {
        const std::string path = joinPath(m_folder, name);
        const bool isUsed =
            std::ranges::any_of(groups, [&](const ListedGroup& group) { return group->iconPath() == path; });
        if (!isUsed && name.ends_with(suffix) && ::unlink(path.c_str()) != 0)
            logError("An icon that no group has stays", Error::system("unlink", path, errno));
    }
}

} // namespace veilkeep
