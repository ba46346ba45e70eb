#include "core/rescue/CopyPlan.h"

#include "core/base/PathText.h"
#include "core/names/HiddenName.h"

#include <string_view>

namespace veilkeep {
namespace {

bool isHidden(std::string_view path) {
    return lastPathComponent(parentPath(path)) == hiddenDirectoryName;
}

bool comesWithItsFolder(const HiddenFolders& found, std::string_view hiddenPath) {
    for (std::string_view above = parentPath(hiddenPath); above.size() > 1; above = parentPath(above))
        if (isHidden(above) && lastPathComponent(above) != hiddenDirectoryName && found.contains(above))
            return true;
    return false;
}

std::string placeOf(const std::vector<RescueRoot>& roots, std::string_view hiddenPath) {
    const std::string_view folder = withoutHiddenDirectories(parentPath(hiddenPath));
    const std::string name = visibleName(lastPathComponent(hiddenPath));
    for (const RescueRoot& root : roots) {
        const std::string base = root.base();
        if (!isSameOrBelow(folder, base))
            continue;
        std::string_view below = folder.substr(base.size());
        below.remove_prefix(below.starts_with('/') ? 1 : 0);
        return joinPath(below, name);
    }
    return name;
}

} // namespace

void forEachCopy(
    const HiddenFolders& found, const std::vector<RescueRoot>& roots,
    const std::function<bool(const std::string& hiddenPath, const std::string& place)>& function) {
    found.forEach([&](const HiddenFolder& folder) {
        for (const std::string& name : folder.names) {
            const std::string path = joinPath(folder.path, name);
            if (!comesWithItsFolder(found, path) && !function(path, placeOf(roots, path)))
                return false;
        }
        return true;
    });
}

} // namespace veilkeep
